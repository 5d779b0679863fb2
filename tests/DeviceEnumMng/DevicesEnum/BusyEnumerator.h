// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include "EventRecorder.h"

#include <memory>

// Long enough for a worker that wrongly begins a pass to be seen doing so: it looks every 10 ms.
inline constexpr int kQuietMilliseconds = 100;

// An enumerator that acknowledges its passes by itself.
class BusyEnumerator
{
public:
    explicit BusyEnumerator(KELA_INTERFACE_TYPE type)
        : enumerator(std::make_unique<CDevicesEnum>())
    {
        recorder.listenTo(*enumerator, [owned = enumerator.get()](const RecordedEvent &event) {
            if (event.kind == KELA_INTERFACE_STATE_PASS_END) {
                owned->FinishOneEnum();
            }
        });
        enumerator->Init(type, false);
    }

    EventRecorder recorder;
    std::unique_ptr<CDevicesEnum> enumerator;
};
