// SPDX-License-Identifier: Apache-2.0
#pragma once

class QThreadPool;

/// The threads of the enumerators' workers. A worker loops as long as its enumerator lives, so the pool has
/// a thread for each, however few cores there are: in the application's own pool workers would starve each
/// other and the application. Lives as long as the process.
QThreadPool *enumeratorPool();
