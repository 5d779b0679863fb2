// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Enumerations.h"
#include "Options.h"
#include "Picture.h"

#include <QObject>
#include <QTimer>

/// Prints what is there and ends the program's event loop. Without a time to listen it takes one pass of every
/// transport; with one it repeats passes until the time is over, so that late answers are in.
class ListCommand : public QObject
{
    Q_OBJECT

public:
    explicit ListCommand(const Options &options);

    void start();

private:
    void onEvent(const EnumerationEvent &event);
    bool isComplete() const;
    void finishIfComplete();

    Options m_options;
    Picture m_picture;
    Enumerations m_enumerations;
    QTimer m_passes;
    QTimer m_end;
    bool m_isTimeOver = false;
    bool m_isFinished = false;
};
