// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomWidget.h>
#include <DeviceEnumMng/DeviceEnumMngExport.h>

#include <QMap>
#include <QString>

class CCtiItemWidget;

/// Lists the GenTL producers of the default folder, one row each, and keeps which of them are
/// switched on in "CtiConfig.ini" of the program's data folder.
///
/// The folder and the file are read once, at construction; the file is written at every hide.
/// Producer states: 0 not loaded, 1 loaded and opened the default way, 2 loaded and opened by
/// virtual port. Any other number that the file holds counts as loaded.
///
/// Thread: GUI.
class DEVICEENUMMNG_EXPORT CDefaultCtiSelWidget : public CustomWidget
{
    Q_OBJECT

public:
    /// Reads the configuration, looks through the default folder and builds the rows.
    explicit CDefaultCtiSelWidget(QWidget *parent);
    ~CDefaultCtiSelWidget() override;

    /// Reads "CtiConfig.ini" into the states. A file that is missing or cannot be read gives none.
    void InitData();

    /// The states by file name, as they were at construction or at the latest hide. The map itself:
    /// copy it before walking it with calls in between that could hide the panel.
    QMap<QString, int> &GetCtiStates();

    /// The default folder, with a slash at its end.
    QString GetCtiDir();

    /// Allows or forbids the choice between "Default" and "Virtual Port" in every row.
    /// While it is forbidden, a row that has the choice reports the state it was built with.
    void SetEnableVirtualPort(bool enable);

    /// Takes the states from the rows, writes them and announces them.
    void hideEvent(QHideEvent *e) override;

    /// Keeps clicks inside the panel from the menu that hosts it.
    void mouseReleaseEvent(QMouseEvent *e) override;

Q_SIGNALS:
    /// The panel was hidden, whether or not anything changed. The file is on disk when the hide is over.
    void SigCtiChanged();

private:
    void mergeDefaultFolder();
    void createRows();

    QMap<QString, int> m_ctiStates;
    QMap<QString, CCtiItemWidget *> m_ctiItems;
};
