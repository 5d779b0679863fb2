// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/EnumeratorPool.h>

#include <QThreadPool>
#include <QtConcurrent>

#include <limits>

namespace
{

QThreadPool *makePool()
{
    auto *pool = new QThreadPool;
    pool->setMaxThreadCount(std::numeric_limits<int>::max());
    return pool;
}

} // namespace

QThreadPool *enumeratorPool()
{
    // Never destroyed: its destructor would wait for the worker of an enumerator that a static object owns.
    static QThreadPool *const s_pool = makePool();
    return s_pool;
}

QFuture<void> runOnEnumeratorPool(void (*work)(void *), void *context)
{
    return QtConcurrent::run(enumeratorPool(), work, context);
}
