// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomCtrExport.h>

#include <QDialog>
#include <QString>

class QLabel;

/// A busy indicator, one per number, centred over Custom::mainDialog(). It is never modal, starts no event loop
/// and does not keep the application from quitting. Thread: GUI.
class CUSTOMCTR_EXPORT CustomLoadingDialog : public QDialog
{
    Q_OBJECT

public:
    ~CustomLoadingDialog() override;

    /// Shows the indicator of a number; when it is shown already, only its text changes.
    static void showLoading(const QString &strText, int nId);
    /// Hides the indicator of a number; does nothing when there is none.
    static void hideLoading(int nId);
    /// True while the indicator of a number is shown.
    static bool isLoading(int nId);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit CustomLoadingDialog(QWidget *parent);

    void setText(const QString &strText);
    void standOverParent();

    QLabel *m_text = nullptr;
};
