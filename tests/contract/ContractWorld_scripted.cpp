// SPDX-License-Identifier: Apache-2.0
#include "ContractWorld.h"

#include "ScriptedAccess.h"
#include "ScriptedRecords.h"

namespace
{

class ScriptedWorld final : public ContractWorld
{
public:
    void reset() override { scriptedAccess().reset(); }

    void plug(const std::string &serial, uint32_t number) override
    {
        KELA_DEVICE_INFO_EX camera = gigeCamera(serial, number % 256);
        camera.special.gige.currentIp += number / 256 * 256;
        setField(camera.modelName, "CV-1");
        setField(camera.secondName, "2.1");
        setField(camera.special.gige.manufacturerName, "Contract Vision");
        scriptedAccess().plug(camera);
    }

    void unplug(const std::string &serial) override { scriptedAccess().unplug(serial); }
    void hold(const std::string &serial) override { scriptedAccess().hold(serial); }
    void letGo(const std::string &serial) override { scriptedAccess().letGo(serial); }

    void holdAndStream(const std::string &serial, uint32_t destination, uint16_t port) override
    {
        scriptedAccess().holdAndStream(serial, destination, port);
    }
};

} // namespace

ContractWorld &contractWorld()
{
    static ScriptedWorld world;
    return world;
}
