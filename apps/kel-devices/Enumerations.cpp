// SPDX-License-Identifier: Apache-2.0
#include "Enumerations.h"

#include "RecordFields.h"

#include <utility>

Enumerations::Enumerations(const Options &options)
    : m_producers(options.producers)
{
    for (const KELA_INTERFACE_TYPE transport : options.transports) {
        auto enumeration = std::make_unique<Enumeration>();
        enumeration->owner = this;
        enumeration->transport = transport;
        enumeration->engine = std::make_unique<CDevicesEnum>();
        enumeration->engine->RegisterEventSink(&Enumerations::onEvent, enumeration.get());
        if (transport == KELA_INTERFACE_TYPE_GENTL_INTERFACE) {
            for (const QString &producer : m_producers) {
                enumeration->engine->AddCtiPath(producer.toLocal8Bit().data());
            }
        }
        m_enumerations.push_back(std::move(enumeration));
    }
}

Enumerations::~Enumerations()
{
    for (const auto &enumeration : m_enumerations) {
        enumeration->engine->Stop();
    }
    m_enumerations.clear();
}

void Enumerations::start(bool isOnlyPass)
{
    m_isOnlyPass = isOnlyPass;
    // Requested before the worker starts, so that it begins at once instead of at its next look.
    requestPasses();
    for (const auto &enumeration : m_enumerations) {
        enumeration->engine->Init(enumeration->transport, false);
    }
}

void Enumerations::requestPasses()
{
    for (const auto &enumeration : m_enumerations) {
        if (!enumeration->isBusy) {
            enumeration->isBusy = true;
            enumeration->engine->UpdateOnce(true, true);
        }
    }
}

// On a worker's thread.
void Enumerations::onEvent(KELA_INTERFACE_INFO *container, KELA_STRUCT_DEVICE_INFO *device,
                           KELA_INTERFACE_STATE kind, int code, void *user)
{
    const auto *enumeration = static_cast<const Enumeration *>(user);
    EnumerationEvent event = enumeration->owner->describe(*enumeration, container, device);
    event.kind = kind;
    event.code = static_cast<quint32>(code);
    if (kind == KELA_INTERFACE_STATE_PASS_END && enumeration->owner->m_isOnlyPass) {
        enumeration->engine->Stop();
    }
    enumeration->owner->queue(event);
}

EnumerationEvent Enumerations::describe(const Enumeration &enumeration, const KELA_INTERFACE_INFO *container,
                                        const KELA_STRUCT_DEVICE_INFO *device) const
{
    EnumerationEvent event;
    event.transport = enumeration.transport;
    if (device != nullptr) {
        event.id = device->deviceId;
        event.fields = deviceFields(*device);
    } else if (container != nullptr && container->interfaceType == KELA_INTERFACE_TYPE_GENTL) {
        const KELA_GENTL_IF_INFO &interface = container->special.genTLInterface;
        event.id = interface.id;
        event.fields = interfaceFields(interface, producerOf(enumeration, interface));
    } else if (container != nullptr) {
        event.id = container->special.network.id;
        event.isCard = true;
        event.fields = cardFields(container->special.network);
    }
    return event;
}

QString Enumerations::producerOf(const Enumeration &enumeration, const KELA_GENTL_IF_INFO &interface) const
{
    for (const QString &producer : m_producers) {
        QByteArray path = producer.toLocal8Bit();
        int count = 0;
        enumeration.engine->GetCtiInterfaceCount(path.data(), &count);
        for (int i = 0; i < count; ++i) {
            int id = -1;
            enumeration.engine->GetCtiInterfaceID(path.data(), i, &id);
            if (id == static_cast<int>(interface.id)) {
                return producer;
            }
        }
    }
    return {};
}

void Enumerations::queue(const EnumerationEvent &event)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_queue.append(event);
    if (m_queue.size() == 1) {
        QMetaObject::invokeMethod(this, &Enumerations::deliver, Qt::QueuedConnection);
    }
}

void Enumerations::deliver()
{
    QVector<EnumerationEvent> events;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        events.swap(m_queue);
    }
    for (const EnumerationEvent &event : qAsConst(events)) {
        if (event.kind == KELA_INTERFACE_STATE_PASS_END) {
            finishPass(event.transport);
        }
        Q_EMIT happened(event);
    }
}

void Enumerations::finishPass(KELA_INTERFACE_TYPE transport)
{
    for (const auto &enumeration : m_enumerations) {
        if (enumeration->transport == transport) {
            enumeration->isBusy = false;
            enumeration->engine->FinishOneEnum();
        }
    }
}
