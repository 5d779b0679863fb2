// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TreeTest.h"

#include <QList>

class QDialog;

/// A tree whose passes run over the scripted device access.
class BridgeTest : public TreeTest
{
    Q_OBJECT

protected:
    /// The hint that a search runs.
    static constexpr int kLoadingId = 4097;
    /// Every transport that the tree shows.
    static constexpr unsigned int kAll = 1 | 4 | 8 | 16;

    void cleanup() override;

    void startPass(unsigned int types);
    void runPass(unsigned int types);
    /// Makes a producer with one interface that the host has opened and one device.
    void openInterface();
    /// Cameras in the tree: beside them, the cards of this machine stand under "GigE".
    int cameraCount();

    /// Boxes that report a failed pass.
    static QList<QDialog *> failureBoxes();
    /// A camera that differs from those with other numbers; its serial number is "S" and 1000 + number.
    static KELA_DEVICE_INFO_EX numberedCamera(int number);
};
