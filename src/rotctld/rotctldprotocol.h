// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

/// The network protocol of Hamlib's rotctld, as functions on bytes. Each line is one command, in a short form
/// ("p") or a long one ("\get_pos").
///
///     p, \get_pos         azimuth and elevation, each on a line of its own
///     P, \set_pos a e     turn to the azimuth a, the elevation e is not used
///     S, \stop            stop as the STOP button does
///     M, \move d s        turn left (d 8) or right (d 16), the speed s is not used
///     _, \get_info        the model
///     \dump_state         what Hamlib's client asks for when it connects
///     1, \dump_caps       what the rotator can do, for people
///     q, Q, \quit         close the connection
///
/// An answer is its values, or "RPRT" and a code. A punctuation mark before a command asks for the extended
/// answer: the command and each value after its name, each followed by that mark (by a line end for "+"),
/// then the code and a line end.
namespace Rotctld {

/// Hamlib's codes for the result of a command.
enum Code : int {
    Done = 0,
    InvalidParameter = -1,
    NotImplemented = -4,
    InputOutputError = -6,
    NotAvailable = -11
};

constexpr double lowestAzimuth = -180.0;
constexpr double highestAzimuth = 450.0;

struct Request
{
    enum Kind {
        Nothing,
        GetPosition,
        SetPosition,
        Stop,
        MoveLeft,
        MoveRight,
        GetInfo,
        DumpState,
        DumpCaps,
        Quit,
        Refused
    };

    Kind kind = Nothing;
    /// The reason when it is refused.
    Code code = Done;
    /// Compass degrees from 0 to below 360, for SetPosition.
    double azimuth = 0.0;
    /// The mark of the extended answer, 0 for the plain answer. The command's long name and its values are
    /// repeated in the extended answer.
    char separator = 0;
    QByteArray name;
    QByteArray values;
};

/// Reads a line, with or without its line end.
Request parse(const QByteArray &line);

/// The answer that has no values but a code.
QByteArray answer(const Request &request, Code code);
/// The answer to GetPosition. `azimuth` is in compass degrees; without one the answer is InputOutputError.
QByteArray position(const Request &request, std::optional<double> azimuth);
/// The answer to GetInfo, DumpState and DumpCaps.
QByteArray description(const Request &request, const QByteArray &model);

} // namespace Rotctld
