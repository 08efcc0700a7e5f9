// SPDX-License-Identifier: MIT
#include "mainwindow/mapimagechoice.h"

#include "settings/wholefile.h"
#include "widgets/map/azimuthalmapimage.h"

#include <QDir>
#include <QFileDialog>
#include <QMessageBox>

void MapImageChoice::ask()
{
    auto *question = new QMessageBox(QMessageBox::Question, tr("Wait a minute!"),
                                     tr("Are you sure you want to select a new map image?"),
                                     QMessageBox::Yes | QMessageBox::No, m_window);
    question->setAttribute(Qt::WA_DeleteOnClose);
    connect(question, &QDialog::finished, this, [this](int answer) {
        if (answer != QMessageBox::No)
            chooseFile();
    });
    question->open();
}

void MapImageChoice::chooseFile()
{
    auto *dialog = new QFileDialog(m_window, tr("Select a new map image"), QDir::homePath(),
                                   tr("Image Files (*.png *.jpg *.bmp)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, &MapImageChoice::install);
    dialog->open();
}

void MapImageChoice::install(const QString &chosenFile)
{
    const QFileInfo chosen(chosenFile);
    if (!chosen.isFile())
        return;
    if (AzimuthalMapImage::load(chosenFile).isNull()) {
        refuse(chosen.fileName());
        return;
    }
    // The chosen file may be the one in place, which must not be removed before it is copied.
    const bool isInPlace =
        chosen.canonicalFilePath() == QFileInfo(AzimuthalMapImage::installedPath()).canonicalFilePath();
    if (isInPlace || copyWholeFile(chosenFile, AzimuthalMapImage::installedPath()))
        emit installed();
}

void MapImageChoice::refuse(const QString &fileName)
{
    auto *box =
        new QMessageBox(QMessageBox::Warning, tr("Select a new map image"),
                        tr("%1 is no picture that can be shown. The map stays as it is.").arg(fileName),
                        QMessageBox::Ok, m_window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}
