// SPDX-License-Identifier: MIT
#pragma once

#include "simbox/boxline.h"

#include <QString>

#include <memory>
#include <optional>

class QCoreApplication;

/// The command line of the simulated box.
struct BoxOptions
{
    /// Nothing when an option is wrong, which `error` tells then. Ends the process after --help.
    static std::optional<BoxOptions> read(const QCoreApplication &application, QString *error);

    std::unique_ptr<BoxLine> makeLine() const;

    QString link;
    QString listen;
    SimulatedBox::Model model = SimulatedBox::Model::StackSwitch;
    double speed = 0.0; // degrees per second
    int relayBox = 0;
    bool quiet = false;
};
