// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include <memory>
#include <vector>

class CAntennaButton;
class QLayout;

namespace Ui {
class CAntennaLabelEditorDialog;
}

/// Edits the captions of antenna and radio buttons on copies of them: the operator clicks a copy and types
/// its caption, which may have several lines. The buttons handed in are only read; the caller takes the
/// captions from the copies.
class CAntennaLabelEditorDialog : public QDialog
{
    Q_OBJECT

public:
    CAntennaLabelEditorDialog(const std::vector<CAntennaButton *> &antennaButtons,
                              const std::vector<CAntennaButton *> &radioButtons, QWidget *parent = nullptr);
    ~CAntennaLabelEditorDialog() override;

    /// The copies, in the order of the buttons handed in. They are children of the dialog.
    std::vector<CAntennaButton *> antennaButtons() const { return m_antennaCopies; }
    std::vector<CAntennaButton *> radioButtons() const { return m_radioCopies; }

private slots:
    void onButtonPressed(bool checked);
    void on_plainTextEdit_textChanged();

private:
    CAntennaButton *addCopy(const CAntennaButton *source, QWidget *parent, QLayout *layout);
    std::vector<CAntennaButton *> allCopies() const;
    void showFocusOnCopies();
    void orderTabs();
    void select(CAntennaButton *copy);

    std::unique_ptr<Ui::CAntennaLabelEditorDialog> m_ui;
    CAntennaButton *m_selectedCopy = nullptr;
    std::vector<CAntennaButton *> m_antennaCopies;
    std::vector<CAntennaButton *> m_radioCopies;
};
