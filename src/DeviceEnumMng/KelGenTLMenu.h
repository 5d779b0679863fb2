// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomMenu.h>
#include <DeviceEnumMng/DeviceEnumMngExport.h>

#include <QMap>
#include <QString>
#include <QStringList>

class CDefaultCtiSelWidget;
class QAction;

/// The menu through which the user manages GenTL producers: a sub-menu with the producers of the
/// default folder and an action that imports a producer from anywhere else.
///
/// Imported producers live as long as the menu and are written to no file.
///
/// Thread: GUI.
class DEVICEENUMMNG_EXPORT KelGenTLMenu : public CustomMenu
{
    Q_OBJECT

public:
    explicit KelGenTLMenu(QWidget *parent);
    ~KelGenTLMenu() override;

    /// Sets the translated texts.
    void UpdateText();

    /// Asks the user for a producer file and adds it. A file that is listed already or lies in the
    /// default folder is refused with a warning; paths are compared as texts.
    void OnAddCtiFile();

    /// All producers with their states: those of the default folder (0 off, 1 default, 2 opened by
    /// virtual port; those switched off included) and the imported ones (3).
    /// @param states  receives the states by full path; what it held before is dropped
    void GetCtiStates(QMap<QString, int> &states);

    /// Removes an imported producer and announces it; does nothing when the path is not listed.
    /// @param path  as GetCtiStates gives it
    void Delete3rdCti(const QString &path);

    /// Allows or forbids the choice of the virtual port in the panel of default producers.
    void SetEnableVirtualPort(bool enable);

    void changeEvent(QEvent *e) override;

Q_SIGNALS:
    /// A producer was imported or removed, or the panel of default producers was closed.
    void SigCtiChanged();

private:
    bool isDefaultCti(const QString &path) const;

    QMenu *m_defaultLoadMenu = nullptr;
    QAction *m_importAction = nullptr;
    CDefaultCtiSelWidget *m_defaultCtiWidget = nullptr;
    QStringList m_3rdCtiList;
};
