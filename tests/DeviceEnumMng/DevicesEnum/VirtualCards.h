// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// @file
/// Network cards that exist only in the test's network namespace.

/// Runs the system's ip.
bool ip(const QStringList &arguments);

/// Makes a card that is up and, through its peer, connected. The peer has no IPv4 address.
bool makeCard(const QString &name, const QString &hardwareAddress);

/// Switches a card on and waits until it carries, which the kernel finds out on its own time.
bool bringUp(const QString &name);

/// Gives a card one more address, as "10.0.0.1/24".
bool addAddress(const QString &name, const QString &address);

/// Removes every card that makeCard made.
void removeAllCards();
