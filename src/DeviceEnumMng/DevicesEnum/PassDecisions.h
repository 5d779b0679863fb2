// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QVector>

#include <cstddef>
#include <cstdint>

/// @file
/// What a pass decides by: functions of records alone.

/// True when both describe one device, seen by the same card.
bool isSameDevice(const KELA_DEVICE_INFO_EX &left, const KELA_DEVICE_INFO_EX &right);

/// A number that is equal for devices that isSameDevice calls the same.
std::size_t sameDeviceHash(const KELA_DEVICE_INFO_EX &device);

/// True when the device's address fits the subnet of its card, or of its host-side address where no card
/// matched.
bool isInSubnetOfItsCard(const KELA_STRUCT_DEVICE_INFO &record);

/// True for 224.0.0.0 to 239.255.255.255.
bool isMulticastAddress(uint32_t address);

/// True for the transports that are told apart and keyed as GigE.
bool isGigETransport(uint32_t transport);

/// True for the transports whose devices hang on a network card.
bool isNetworkTransport(uint32_t transport);

/// True for both GenTL transports.
bool isGenTLTransport(uint32_t transport);

/// The first controller that holds the device's port; the last one when none does; zero when there is none.
KELA_USBCONTROLLER_INFO controllerOf(const KELA_DEVICE_INFO_EX &device,
                                     const QVector<KELA_USBCONTROLLER_INFO> &controllers);

/// The card through which a device was seen; only the card value is set when no card matches.
KELA_DEVICE_NETWORK cardOf(const KELA_DEVICE_INFO_EX &device, const QVector<KELA_NETWORK> &cards);

/// Number of records to read from a list whose count comes from elsewhere.
std::size_t readableCount(uint32_t count);
