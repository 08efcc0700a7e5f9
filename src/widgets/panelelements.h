// SPDX-License-Identifier: MIT
#pragma once

class CAntennaButton;
class CLedButton;
class QLabel;
class QString;
class QWidget;

/// Makes the elements of a front panel as its children. None takes the focus; labels and indicators let the
/// mouse through to the panel.
namespace PanelElements {

CAntennaButton *antennaButton(const QString &text, QWidget *panel);
CLedButton *led(const QString &text, const QString &spokenName, QWidget *panel);
CLedButton *indicator(const QString &text, const QString &spokenName, QWidget *panel);

QLabel *smallLabel(QWidget *panel);
void hiddenLabel(const QString &text, QWidget *panel);
QLabel *largeInfoLabel(QWidget *panel);
QLabel *smallInfoLabel(QWidget *panel);
QLabel *titleLabel(QWidget *panel);

} // namespace PanelElements
