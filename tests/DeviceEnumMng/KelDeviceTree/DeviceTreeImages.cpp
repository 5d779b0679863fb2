// SPDX-License-Identifier: Apache-2.0
// An object library wants a source of its own beside the compiled images.
