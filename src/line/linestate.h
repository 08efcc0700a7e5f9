// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The state of the line to the box, as the operator is told.
struct LineState
{
    enum class Kind {
        Closed,       ///< no port has been opened
        NoSuchPort,   ///< there is no port of that name
        NoPermission, ///< the port is there and may not be opened
        Busy,         ///< another program holds the port
        Failed,       ///< the port did not open for another reason
        Listening,    ///< open, no answer yet
        Answering,    ///< the last poll was answered
        Silent,       ///< the box has answered before and does not now
        Lost,         ///< was open and went away; it is tried again
        // Of a line over the network, each is tried again but for the malformed address:
        Connecting,      ///< the name is looked up, or the server has not answered yet
        Refused,         ///< nobody serves that port on the server
        NameNotFound,    ///< no server has that name
        MalformedAddress ///< the address cannot be understood
    };

    Kind kind = Kind::Closed;
    QString portName;
    /// The system's own words for a line that did not open; may be empty.
    QString detail;
    /// The group that may use the port, for NoPermission on systems that have groups; may be empty.
    QString group;
    /// Whole seconds since the box last answered, for Listening and Silent.
    int silentSeconds = 0;
};

/// One or two sentences for the operator: the state of the line and what to do about it.
QString describe(const LineState &state);
