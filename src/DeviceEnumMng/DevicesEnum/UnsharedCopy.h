// SPDX-License-Identifier: Apache-2.0
#pragma once

/// A copy of a Qt container that shares nothing with it, made while the container's lock is held.
/// An implicitly shared copy would be looked at after the lock is gone, while the next owner of the lock
/// decides by an unordered look at the reference count whether it may change the container in place.
template <typename Container>
Container unsharedCopy(const Container &container)
{
    Container copy = container;
    copy.detach();
    return copy;
}
