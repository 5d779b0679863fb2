// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <map>
#include <memory>

namespace browser
{

/// Asks for enumeration passes again and again, each transport at its own pace: the next pass of a
/// transport is asked for a pause after its last one has ended, so that passes never pile up, however
/// slow they are. A transport whose pass failed waits until somebody asks for it.
///
/// Thread: GUI.
class PassScheduler : public QObject
{
    Q_OBJECT

public:
    explicit PassScheduler(std::chrono::milliseconds pause = std::chrono::seconds(1),
                           QObject *parent = nullptr);
    ~PassScheduler() override;

    /// Chooses the transports to keep current, KELA_INTERFACE_TYPE bits. New ones are asked for at once.
    void setTransports(uint transports);
    uint transports() const { return m_transports; }
    /// Switches the repetition on or off; while it is off passes run only when asked for.
    void setAutomatic(bool automatic);
    bool isAutomatic() const { return m_automatic; }
    /// Holds everything back, what is asked for too; afterwards every chosen transport is asked for.
    void setHeld(bool isHeld);
    bool isHeld() const { return m_isHeld; }
    /// Asks for one pass of each chosen transport now; where one runs already, for one more after it.
    void requestNow(uint transports);
    /// Asks for one pass of each chosen transport because something changed there; not while the repetition
    /// is off, since then the user chooses the moment.
    void requestForChange(uint transports);
    /// Transports whose pass runs, as bits.
    uint running() const;
    /// Transports that wait to be asked for because their last pass failed, as bits.
    uint paused() const;
    /// Forgets every pass under way: the tree that ran them is gone.
    void reset();

public Q_SLOTS:
    /// To be called with the result of a pass, before or after its end is told.
    void noteResult(int transport, int errorCode);
    /// To be called at the end of a pass.
    void noteFinished(int transport);

Q_SIGNALS:
    /// A pass of one transport is wanted.
    /// @param byUser  it was asked for, not due
    void passWanted(uint transport, bool byUser);
    /// The set of running or paused transports changed.
    void changed();

private:
    struct Transport;

    void request(uint transports, bool byUser);
    Transport &transportOf(uint type);
    void start(uint type, bool byUser);
    void startWhenDue(uint type);

    std::chrono::milliseconds m_pause;
    uint m_transports = 0;
    bool m_automatic = true;
    bool m_isHeld = false;
    std::map<uint, std::unique_ptr<Transport>> m_states;
};

} // namespace browser
