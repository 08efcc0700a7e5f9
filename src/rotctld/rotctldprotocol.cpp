// SPDX-License-Identifier: MIT
#include "rotctld/rotctldprotocol.h"

#include <QList>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>
#include <iterator>

namespace Rotctld {

namespace {

constexpr double fullTurn = 360.0;
/// Trackers send elevations, which are not used, and Hamlib's client refuses those beyond.
constexpr double lowestElevation = -90.0;
constexpr double highestElevation = 180.0;
constexpr char protocolVersion[] = "1";
constexpr char netModel[] = "2";

/// Marks that begin a command, or are kept for another use.
constexpr char noSeparators[] = "\\?_";

enum Direction { Up = 2, Down = 4, Left = 8, Right = 16 };

struct Command
{
    char shortName; // 0 for none
    const char *name;
    Request::Kind kind;
    int valueCount;
};

constexpr Command commands[] = {
    {'p', "get_pos", Request::GetPosition, 0}, {'P', "set_pos", Request::SetPosition, 2},
    {'S', "stop", Request::Stop, 0},           {'M', "move", Request::MoveLeft, 2},
    {'_', "get_info", Request::GetInfo, 0},    {0, "dump_state", Request::DumpState, 0},
    {'1', "dump_caps", Request::DumpCaps, 0},  {'q', "quit", Request::Quit, 0},
    {'Q', "quit", Request::Quit, 0},
};

struct Record
{
    QByteArray name;
    QByteArray value;
    /// What stands before the value in a plain answer.
    QByteArray plainPrefix = {};
};
using Records = std::vector<Record>;

const Command *commandOf(const QByteArray &word)
{
    const auto isMeant = [&word](const Command &command) {
        return word.startsWith('\\') ? word.mid(1) == command.name
                                     : command.shortName && word == QByteArray(1, command.shortName);
    };
    const auto *found = std::find_if(std::begin(commands), std::end(commands), isMeant);
    return found == std::end(commands) ? nullptr : found;
}

/// Not a number for whatever is not one.
double numberOf(const QByteArray &text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? number : std::nan("");
}

double foldedToCompass(double azimuth)
{
    const double folded = std::fmod(azimuth + fullTurn, fullTurn);
    return folded < fullTurn ? folded : 0.0;
}

Request refused(Request request, Code code)
{
    request.kind = Request::Refused;
    request.code = code;
    return request;
}

Request withTarget(Request request, const QByteArray &azimuth, const QByteArray &elevation)
{
    const double target = numberOf(azimuth);
    // Not written the other way round, because nothing compares with what is not a number.
    const bool isInRange = target >= lowestAzimuth && target <= highestAzimuth;
    if (!isInRange || std::isnan(numberOf(elevation)))
        return refused(request, InvalidParameter);
    request.azimuth = foldedToCompass(target);
    return request;
}

Request withDirection(Request request, const QByteArray &direction, const QByteArray &speed)
{
    if (std::isnan(numberOf(speed)))
        return refused(request, InvalidParameter);
    switch (direction.toInt()) {
    case Left:
        return request;
    case Right:
        request.kind = Request::MoveRight;
        return request;
    case Up:
    case Down:
        return refused(request, NotAvailable);
    default:
        return refused(request, InvalidParameter);
    }
}

/// Where the command's word ends: a short one may be followed by its values at once.
int wordLength(const QByteArray &text)
{
    if (!text.startsWith('\\'))
        return text.isEmpty() ? 0 : 1;
    const auto *end = std::find_if(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\t'; });
    return int(end - text.begin());
}

QByteArray join(const Request &request, const Records &records, Code code)
{
    QByteArray text;
    if (!request.separator) {
        for (const Record &record : records)
            text += record.plainPrefix + record.value + '\n';
        return text;
    }
    text = request.name + ':' + (request.values.isEmpty() ? "" : " ") + request.values + request.separator;
    for (const Record &record : records)
        text += record.name + ": " + record.value + request.separator;
    return text + "RPRT " + QByteArray::number(code) + '\n';
}

Records state()
{
    const auto fixed = [](double value) { return QByteArray::number(value, 'f', 6); };
    return {{"rotctld Protocol Ver", protocolVersion},
            {"Rotor Model", netModel},
            {"Minimum Azimuth", fixed(lowestAzimuth), "min_az="},
            {"Maximum Azimuth", fixed(highestAzimuth), "max_az="},
            {"Minimum Elevation", fixed(lowestElevation), "min_el="},
            {"Maximum Elevation", fixed(highestElevation), "max_el="},
            {"South Zero", "0", "south_zero="},
            {"rot_type", "Az", "rot_type="},
            {"End", "done"}};
}

Records capabilities(const QByteArray &model)
{
    const auto line = [](const QByteArray &name, const QByteArray &value) {
        return Record{name, value, name + ":\t"};
    };
    return {line("Model name", model),
            line("Rot type", "Azimuth"),
            line("Min Azimuth", QByteArray::number(lowestAzimuth, 'f', 2)),
            line("Max Azimuth", QByteArray::number(highestAzimuth, 'f', 2)),
            line("Can set Position", "Y"),
            line("Can get Position", "Y"),
            line("Can Stop", "Y"),
            line("Can Park", "N"),
            line("Can Reset", "N"),
            line("Can Move", "Y"),
            line("Can get Info", "Y")};
}

} // namespace

Request parse(const QByteArray &line)
{
    Request request;
    QByteArray text = line.trimmed();
    if (text.isEmpty())
        return request;
    if (std::ispunct(static_cast<unsigned char>(text.at(0))) && !std::strchr(noSeparators, text.at(0))) {
        request.separator = text.at(0) == '+' ? '\n' : text.at(0);
        text = text.mid(1).trimmed();
    }
    const int length = wordLength(text);
    request.values = text.mid(length).simplified();
    const Command *command = commandOf(text.left(length));
    if (!command) {
        request.name = text.left(length);
        return refused(request, NotImplemented);
    }
    request.kind = command->kind;
    request.name = command->name;
    const QList<QByteArray> values =
        request.values.isEmpty() ? QList<QByteArray>() : request.values.split(' ');
    if (values.size() != command->valueCount)
        return refused(request, InvalidParameter);
    if (request.kind == Request::SetPosition)
        return withTarget(request, values[0], values[1]);
    return request.kind == Request::MoveLeft ? withDirection(request, values[0], values[1]) : request;
}

QByteArray answer(const Request &request, Code code)
{
    return request.separator ? join(request, {}, code) : "RPRT " + QByteArray::number(code) + '\n';
}

QByteArray position(const Request &request, std::optional<double> azimuth)
{
    if (!azimuth)
        return answer(request, InputOutputError);
    return join(request, {{"Azimuth", QByteArray::number(*azimuth, 'f', 2)}, {"Elevation", "0.00"}}, Done);
}

QByteArray description(const Request &request, const QByteArray &model)
{
    switch (request.kind) {
    case Request::GetInfo:
        return join(request, {{"Info", model}}, Done);
    case Request::DumpState:
        return join(request, state(), Done);
    case Request::DumpCaps:
        return join(request, capabilities(model), Done) + (request.separator ? "" : "RPRT 0\n");
    default:
        return answer(request, NotImplemented);
    }
}

} // namespace Rotctld
