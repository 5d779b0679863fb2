// SPDX-License-Identifier: Apache-2.0
#include "DescriptionFile.h"

#include <cstdint>
#include <cstdio>

namespace kelsim
{

namespace
{

struct Feature {
    const char *name;
    uint32_t address;
    unsigned int size;
    bool isText;
    bool isWritable;
};

constexpr Feature kFeatures[] = {
    {"DeviceVendorName", 0x48, 32, true, false},
    {"DeviceModelName", 0x68, 32, true, false},
    {"DeviceVersion", 0x88, 32, true, false},
    {"DeviceSerialNumber", 0xD8, 16, true, false},
    {"DeviceUserID", 0xE8, 16, true, true},
    {"GevCurrentIPAddress", 0x24, 4, false, false},
    {"GevCurrentSubnetMask", 0x34, 4, false, false},
    {"GevCurrentDefaultGateway", 0x44, 4, false, false},
    {"GevHeartbeatTimeout", 0x938, 4, false, true},
    {"GevCCP", 0xA00, 4, false, true},
    {"GevPrimaryApplicationSocket", 0xA04, 4, false, false},
    {"GevPrimaryApplicationIPAddress", 0xA14, 4, false, false},
    {"GevSCPHostPort", 0xD00, 4, false, true},
    {"GevSCPSPacketSize", 0xD04, 4, false, true},
    {"GevSCPD", 0xD08, 4, false, true},
    {"GevSCDA", 0xD18, 4, false, true},
};

const char *const kOpening =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<RegisterDescription ModelName="Simulated" VendorName="Simulated" ToolTip="Simulated camera"
 StandardNameSpace="GEV" SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0"
 MajorVersion="1" MinorVersion="0" SubMinorVersion="0" ProductGuid="5ad20000-0000-4000-8000-000000000001"
 VersionGuid="5ad20000-0000-4000-8000-000000000002" xmlns="http://www.genicam.org/GenApi/Version_1_1">
<Port Name="Device"/>
)";

std::string featureEntry(const Feature &feature)
{
    const char *const kind = feature.isText ? "StringReg" : "IntReg";
    const char *const format = feature.isText ? "" : "<Sign>Unsigned</Sign><Endianess>BigEndian</Endianess>";
    char text[320];
    std::snprintf(text, sizeof text,
                  "<%s Name=\"%s\"><Address>0x%X</Address><Length>%u</Length><AccessMode>%s</AccessMode>"
                  "<pPort>Device</pPort><Cachable>NoCache</Cachable>%s</%s>\n",
                  kind, feature.name, feature.address, feature.size, feature.isWritable ? "RW" : "RO", format,
                  kind);
    return text;
}

std::string buildDescription()
{
    std::string text = kOpening;
    text += "<Category Name=\"Root\" NameSpace=\"Standard\">";
    for (const Feature &feature : kFeatures) {
        text += std::string("<pFeature>") + feature.name + "</pFeature>";
    }
    text += "</Category>\n";
    for (const Feature &feature : kFeatures) {
        text += featureEntry(feature);
    }
    text += "</RegisterDescription>\n";
    text.resize((text.size() + 3) / 4 * 4, ' ');
    return text;
}

} // namespace

const std::string &descriptionFile()
{
    static const std::string text = buildDescription();
    return text;
}

} // namespace kelsim
