// SPDX-License-Identifier: Apache-2.0
#include "ProducerLookUp.h"

#include <DeviceEnumMng/KelDeviceTree.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <QMap>

namespace browser
{

QVector<Producer> ProducerLookUp::all(const KelDeviceTree &tree)
{
    QVector<Producer> producers;
    auto *menu = tree.findChild<KelGenTLMenu *>();
    if (!menu)
        return producers;
    QMap<QString, int> states;
    menu->GetCtiStates(states);
    for (auto state = states.cbegin(); state != states.cend(); ++state) {
        Producer producer;
        producer.path = state.key();
        producer.choice = static_cast<Producer::Choice>(state.value());
        producer.infoCode =
            m_access.GetGenTLProducerInfo(state.key().toLocal8Bit().constData(), &producer.info);
        producers.append(producer);
    }
    return producers;
}

Producer ProducerLookUp::one(const KelDeviceTree &tree, const QString &path)
{
    const QVector<Producer> producers = all(tree);
    for (const Producer &producer : producers) {
        if (producer.path == path)
            return producer;
    }
    return {};
}

} // namespace browser
