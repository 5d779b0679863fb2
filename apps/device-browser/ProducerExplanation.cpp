// SPDX-License-Identifier: Apache-2.0
#include "ProducerExplanation.h"

#include "DeviceText.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace browser
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ProducerExplanation)
};

QString choiceText(Producer::Choice choice)
{
    switch (choice) {
    case Producer::Choice::Off:
        return Texts::tr("Switched off");
    case Producer::Choice::VirtualPort:
        return Texts::tr("Switched on, opened by virtual port");
    case Producer::Choice::Imported:
        return Texts::tr("Imported until this program ends");
    case Producer::Choice::On:
        break;
    }
    return Texts::tr("Switched on");
}

QString stateText(const Producer &producer)
{
    if (producer.infoCode == KELA_ERROR_PRODUCER_MISSING)
        return Texts::tr("The file is not there");
    switch (producer.info.state) {
    case KELA_PRODUCER_READY:
        return Texts::tr("Works");
    case KELA_PRODUCER_REFUSED:
        return Texts::tr("Refused");
    case KELA_PRODUCER_FAILING:
        return Texts::tr("Reports errors");
    case KELA_PRODUCER_NOT_RESPONDING:
        return Texts::tr("Does not respond");
    default:
        return Texts::tr("Not used yet");
    }
}

bool isInTrouble(const Producer &producer)
{
    const bool isSound = producer.infoCode == KELA_OK && (producer.info.state == KELA_PRODUCER_READY ||
                                                          producer.info.state == KELA_PRODUCER_UNKNOWN);
    return producer.choice != Producer::Choice::Off && !isSound;
}

} // namespace

FactGroup explainProducer(const Producer &producer)
{
    FactGroup group{Texts::tr("Producer %1").arg(QFileInfo(producer.path).fileName()), {}};
    group.add(Texts::tr("State"), stateText(producer));
    group.add(Texts::tr("Reason"), deviceText(producer.info.trouble));
    group.add(Texts::tr("Choice"), choiceText(producer.choice));
    group.add(Texts::tr("Called"), deviceText(producer.info.displayName));
    group.add(Texts::tr("Maker"), deviceText(producer.info.vendor));
    group.add(Texts::tr("Model"), deviceText(producer.info.model));
    group.add(Texts::tr("Version"), deviceText(producer.info.version));
    group.add(Texts::tr("Reaches"), deviceText(producer.info.transportType));
    group.add(Texts::tr("File"), producer.path);
    return group;
}

QString producersInTrouble(const QVector<Producer> &producers)
{
    const auto count = static_cast<int>(std::count_if(producers.cbegin(), producers.cend(), isInTrouble));
    return count == 0 ? QString()
                      : Texts::tr("%n producer(s) cannot be used; the reason is below.", nullptr, count);
}

} // namespace browser
