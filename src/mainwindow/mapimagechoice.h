// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

/// Lets the operator choose another map image and copies it beside the program:
///
///     ask() --Yes--> file dialog --a picture---> copied, installed()
///                                --no picture--> a message; the present map stays
///
/// Its dialogs are modal for `window` but run no event loop of their own.
class MapImageChoice : public QObject
{
    Q_OBJECT

public:
    /// The dialogs belong to `window`, which is not owned.
    explicit MapImageChoice(QWidget *window) : m_window(window) {}

    void ask();

signals:
    /// The chosen image is in place.
    void installed();

private:
    void chooseFile();
    void install(const QString &chosenFile);
    void refuse(const QString &fileName);

    QPointer<QWidget> m_window;
};
