// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Enumerations.h"
#include "Options.h"
#include "Picture.h"

#include <QObject>
#include <QTimer>

/// Prints a line for every change, flushed at once, until the program is interrupted.
class WatchCommand : public QObject
{
    Q_OBJECT

public:
    explicit WatchCommand(const Options &options);

    void start();

    /// Ends the program's event loop.
    void stop();

private:
    void onEvent(const EnumerationEvent &event);

    Options m_options;
    Picture m_picture;
    Enumerations m_enumerations;
    QTimer m_passes;
    bool m_isJson;
};
