#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

/// The network protocol of Hamlib's rotctld, as functions of bytes: one command a line, in a short form ("p")
/// or a long one ("\get_pos").
///
///     p, \get_pos         azimuth and elevation, a line each
///     P, \set_pos a e     turn to the azimuth a
///     S, \stop
///     M, \move d s        turn left (d 8) or right (d 16), the speed s is not used
///     _, \get_info        the model
///     \dump_state         what Hamlib's client asks for when it connects
///     1, \dump_caps       the same for people
///     q, \quit            close the connection
///
/// An answer is its values, or "RPRT" and a code. A punctuation mark before a command asks for the extended
/// answer: the command, each value after its name, and the code, each ended by that mark ("+": by a line
/// end).
namespace Rotctld {

/// Hamlib's codes for what a command came to.
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
    /// Why, when it is refused.
    Code code = Done;
    /// Compass degrees from 0 to below 360, for SetPosition.
    double azimuth = 0.0;
    /// For the extended answer: what ends its records, 0 in the plain form, and the command's long name and
    /// values.
    char separator = 0;
    QByteArray name;
    QByteArray values;
};

/// Reads a line, with or without its end.
Request parse(const QByteArray &line);

/// The answer that is a code alone.
QByteArray answer(const Request &request, Code code);
/// `azimuth` in compass degrees; without one it is an input/output error.
QByteArray position(const Request &request, std::optional<double> azimuth);
/// The answer to GetInfo, DumpState and DumpCaps.
QByteArray description(const Request &request, const QByteArray &model);

} // namespace Rotctld
