// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QSettings>
#include <QString>
#include <QStringList>

namespace browser
{

/// The user's choices, kept over restarts in "DeviceBrowser.ini" in the program data folder; what the
/// device library itself reads stands in "LocalConfig.ini" beside it. Values that a file holds wrongly
/// read as their defaults. Thread: GUI.
class SettingsStore
{
public:
    /// @param folder  the program data folder
    explicit SettingsStore(const QString &folder);

    /// Transports to search, KELA_INTERFACE_TYPE bits.
    uint transports() const;
    void setTransports(uint transports);

    bool isAutomaticRefresh() const;
    void setAutomaticRefresh(bool on);

    /// "en", "zh_CN" or "de".
    QString language() const;
    void setLanguage(const QString &locale);

    /// A Custom::Theme.
    int theme() const;
    void setTheme(int theme);

    /// A KelInterface::EncodingType.
    int encoding() const;
    void setEncoding(int encoding);

    /// Kinds of rows that are hidden, by the names of RowKinds.
    QStringList hiddenKinds() const;
    void setHiddenKinds(const QStringList &kinds);

    /// Serial numbers of the cameras to keep on top, the topmost last.
    QStringList stayTop() const;
    void setStayTop(const QStringList &serials);

    bool isVirtualPortAllowed() const;
    void setVirtualPortAllowed(bool on);

    bool areRowButtonsShown() const;
    void setRowButtonsShown(bool on);

    /// How cameras answer the discovery: 1 by broadcast where they like, 0 to this computer only.
    /// Takes effect with the next tree.
    int acknowledgeMode() const;
    void setAcknowledgeMode(int mode);

    QByteArray geometry() const;
    QByteArray layout() const;
    void setWindow(const QByteArray &geometry, const QByteArray &layout);

private:
    QSettings m_own;
    QSettings m_library;
};

} // namespace browser
