// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>

/// Puts off the styling of what is in a hidden container until it is first shown or measured. Qt styles it
/// before the first picture of the window otherwise, which takes a twentieth of the program's start.
class LateStyle : public QObject
{
    Q_OBJECT

public:
    /// The container is still empty. It owns this.
    explicit LateStyle(QWidget *container);

    bool eventFilter(QObject *container, QEvent *event) override;
};

/// For forms, which fill a frame as soon as it is made.
class LateStyledFrame : public QFrame
{
    Q_OBJECT

public:
    explicit LateStyledFrame(QWidget *parent = nullptr) : QFrame(parent) { new LateStyle(this); }
};
