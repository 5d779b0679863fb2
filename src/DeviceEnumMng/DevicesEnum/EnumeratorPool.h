// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFuture>

class QThreadPool;

/// The threads of the enumerators' workers. A worker loops as long as its enumerator lives, so the pool has
/// a thread for each, however few cores there are: in the application's own pool workers would starve each
/// other and the application. Lives as long as the process.
QThreadPool *enumeratorPool();

/// Runs a function on a thread of the pool.
/// A function with one pointer, so that nothing but Qt's own code touches the object that carries it to the
/// thread: thread checkers do not see how Qt's code hands it over.
QFuture<void> runOnEnumeratorPool(void (*work)(void *), void *context);
