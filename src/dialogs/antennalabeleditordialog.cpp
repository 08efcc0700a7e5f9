// SPDX-License-Identifier: MIT
#include "dialogs/antennalabeleditordialog.h"

#include "ui_antennalabeleditordialog.h"
#include "widgets/antennabutton.h"

#include <QSignalBlocker>

namespace {

// The copy's own style sheet hides the focus frame of the window's style sheet.
constexpr char focusRule[] = "   QPushButton:focus{border: 1px solid #ffa02f; outline: none;}";

} // namespace

CAntennaLabelEditorDialog::CAntennaLabelEditorDialog(const std::vector<CAntennaButton *> &antennaButtons,
                                                     const std::vector<CAntennaButton *> &radioButtons,
                                                     QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::CAntennaLabelEditorDialog>())
{
    m_ui->setupUi(this);
    m_ui->dumyButton->hide();
    m_ui->radioDumyButton->hide();
    for (const CAntennaButton *source : antennaButtons)
        m_antennaCopies.push_back(addCopy(source, m_ui->buttonsFrame, m_ui->horizontalLayoutX));
    for (const CAntennaButton *source : radioButtons) {
        CAntennaButton *copy = addCopy(source, m_ui->radiobuttonsFrame, m_ui->radioHorizontalLayout);
        copy->setColor(source->color());
        m_radioCopies.push_back(copy);
    }
    showFocusOnCopies();
    orderTabs();
    m_ui->label_3->setVisible(!radioButtons.empty());
    m_ui->radiobuttonsFrame->setVisible(!radioButtons.empty());
}

CAntennaLabelEditorDialog::~CAntennaLabelEditorDialog() = default;

void CAntennaLabelEditorDialog::onButtonPressed(bool checked)
{
    Q_UNUSED(checked)
    if (auto *copy = qobject_cast<CAntennaButton *>(sender()))
        select(copy);
}

void CAntennaLabelEditorDialog::on_plainTextEdit_textChanged()
{
    if (m_selectedCopy != nullptr)
        m_selectedCopy->setText(m_ui->plainTextEdit->toPlainText());
}

CAntennaButton *CAntennaLabelEditorDialog::addCopy(const CAntennaButton *source, QWidget *parent,
                                                   QLayout *layout)
{
    auto *copy = new CAntennaButton(source->text(), parent);
    copy->setMinimumSize(source->size());
    // Return is for OK; Space presses a copy.
    copy->setAutoDefault(false);
    layout->addWidget(copy);
    connect(copy, &CAntennaButton::clicked, this, &CAntennaLabelEditorDialog::onButtonPressed);
    return copy;
}

std::vector<CAntennaButton *> CAntennaLabelEditorDialog::allCopies() const
{
    std::vector<CAntennaButton *> copies = m_antennaCopies;
    copies.insert(copies.end(), m_radioCopies.begin(), m_radioCopies.end());
    return copies;
}

void CAntennaLabelEditorDialog::showFocusOnCopies()
{
    for (CAntennaButton *copy : allCopies())
        copy->setStyleSheet(copy->styleSheet() + QLatin1String(focusRule));
}

void CAntennaLabelEditorDialog::orderTabs()
{
    QWidget *previous = m_ui->dumyButton;
    for (CAntennaButton *copy : allCopies()) {
        setTabOrder(previous, copy);
        previous = copy;
    }
    if (!m_antennaCopies.empty())
        m_antennaCopies.front()->setFocus();
}

void CAntennaLabelEditorDialog::select(CAntennaButton *copy)
{
    m_selectedCopy = copy;
    for (CAntennaButton *other : allCopies())
        other->setChecked(other == copy);
    const QSignalBlocker blocker(m_ui->plainTextEdit);
    m_ui->plainTextEdit->setPlainText(copy->text());
    m_ui->plainTextEdit->moveCursor(QTextCursor::End);
    m_ui->plainTextEdit->setFocus();
}
