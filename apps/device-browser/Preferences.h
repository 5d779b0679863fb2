// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Languages.h"
#include "SettingsStore.h"

#include <QObject>

namespace browser
{

class PassScheduler;
class TreeHost;

/// The user's choices: each is applied at once and kept over restarts. Thread: GUI.
class Preferences : public QObject
{
    Q_OBJECT

public:
    /// The store, host and scheduler must outlive this.
    Preferences(SettingsStore *store, TreeHost *host, PassScheduler *scheduler, QObject *parent = nullptr);

    const SettingsStore &store() const { return *m_store; }
    /// Applies what concerns the program as a whole.
    void applyToProgram();
    /// Applies what concerns the tree, for a new one.
    void applyToTree();

    void setTransports(uint transports);
    void setAutomaticRefresh(bool on);
    void setLanguage(const QString &locale);
    /// Shows the program in a language for now only.
    void showLanguage(const QString &locale) { m_language.use(locale); }
    void setTheme(int theme);
    void setEncoding(int encoding);
    void setKindVisible(const QString &kind, bool isVisible);
    void setVirtualPortAllowed(bool on);
    void setRowButtonsShown(bool on);
    /// Takes effect with the next start.
    void setAcknowledgeMode(int mode);

    bool isKeptOnTop(const QString &serial) const;
    /// A camera put on top stands above the ones that were put there before.
    void setKeptOnTop(const QString &serial, bool on);

Q_SIGNALS:
    void changed();

private:
    SettingsStore *m_store;
    TreeHost *m_host;
    PassScheduler *m_scheduler;
    LanguageSwitch m_language;
};

} // namespace browser
