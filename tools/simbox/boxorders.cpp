// SPDX-License-Identifier: MIT
#include "simbox/boxorders.h"

#include "simbox/boxline.h"

#include <QStringList>

#include <optional>

namespace {

using Arguments = QStringList;

struct Order
{
    const char *name;
    const char *arguments;
    const char *meaning;
    bool (*obey)(BoxLine &line, const Arguments &arguments); // false: the arguments make no sense
};

constexpr int MaxDelayMs = 60000;
constexpr int MaxNoiseBytes = 1000000;

std::optional<bool> onOff(const Arguments &arguments, int index)
{
    const QString word = arguments.value(index);
    if (word == QLatin1String("on"))
        return true;
    if (word == QLatin1String("off"))
        return false;
    return std::nullopt;
}

std::optional<int> number(const Arguments &arguments, int lowest, int highest)
{
    bool isNumber = false;
    const int value = arguments.value(0).toInt(&isNumber);
    if (!isNumber || value < lowest || value > highest)
        return std::nullopt;
    return value;
}

std::optional<double> degrees(const Arguments &arguments)
{
    bool isNumber = false;
    const double value = arguments.value(0).toDouble(&isNumber);
    if (!isNumber || !(value >= -360.0 && value <= 360.0))
        return std::nullopt;
    return value;
}

bool setPort(BoxLine &line, const Arguments &arguments, void (SimulatedBox::*set)(int, bool))
{
    const auto port = number(arguments, 1, SimulatedBox::PortCount);
    const auto on = onOff(arguments, 1);
    if (!port || !on)
        return false;
    line.withBox([&](SimulatedBox &box) { (box.*set)(*port - 1, *on); });
    return true;
}

bool setSwitch(BoxLine &line, const Arguments &arguments, void (*set)(SimulatedBox &, bool))
{
    const auto on = onOff(arguments, 0);
    if (on)
        line.withBox([&](SimulatedBox &box) { set(box, *on); });
    return on.has_value();
}

bool setDegrees(BoxLine &line, const Arguments &arguments, void (SimulatedRotor::*set)(double))
{
    const auto value = degrees(arguments);
    if (value)
        line.withBox([&](SimulatedBox &box) { (box.rotor(qMax(0, box.selectedRotor())).*set)(*value); });
    return value.has_value();
}

bool setRelayBox(BoxLine &line, const Arguments &arguments)
{
    const auto id = number(arguments, 0, 15);
    if (id)
        line.withBox([&](SimulatedBox &box) { box.setRelayBoxId(*id); });
    return id.has_value();
}

bool mute(BoxLine &line, const Arguments &arguments)
{
    const auto on = onOff(arguments, 0);
    if (on)
        line.setFault(*on ? LineFault::silence() : LineFault::none());
    return on.has_value();
}

bool delay(BoxLine &line, const Arguments &arguments)
{
    const auto pause = number(arguments, 0, MaxDelayMs);
    if (pause)
        line.setFault(*pause > 0 ? LineFault::delayed(*pause) : LineFault::none());
    return pause.has_value();
}

bool noise(BoxLine &line, const Arguments &arguments)
{
    const auto bytes = number(arguments, 1, MaxNoiseBytes);
    if (bytes)
        line.setFault(LineFault::noise(*bytes), 1);
    return bytes.has_value();
}

const Order Orders[] = {
    {"rx", "1..4 on|off", "receive port",
     [](BoxLine &line, const Arguments &a) { return setPort(line, a, &SimulatedBox::setReceivePort); }},
    {"tx", "1..4 on|off", "transmit line",
     [](BoxLine &line, const Arguments &a) { return setPort(line, a, &SimulatedBox::setTransmitLine); }},
    {"aux", "on|off", "aux flag: the antenna buttons turn red and show the transmit lines",
     [](BoxLine &line, const Arguments &a) {
         return setSwitch(line, a, [](SimulatedBox &box, bool on) { box.setAux(on); });
     }},
    {"id", "0..15", "relay box id", setRelayBox},
    {"rotors", "on|off", "the stack switch carries a pair of rotors",
     [](BoxLine &line, const Arguments &a) {
         return setSwitch(line, a, [](SimulatedBox &box, bool on) { box.setRotorPair(on); });
     }},
    {"angle", "DEG", "put the rotor there",
     [](BoxLine &line, const Arguments &a) { return setDegrees(line, a, &SimulatedRotor::setPosition); }},
    {"wind", "DEG_PER_S", "drift of the resting rotor, 0 ends it",
     [](BoxLine &line, const Arguments &a) { return setDegrees(line, a, &SimulatedRotor::setWind); }},
    {"stick", "on|off", "the rotor is stuck",
     [](BoxLine &line, const Arguments &a) {
         return setSwitch(line, a, [](SimulatedBox &box, bool on) {
             box.rotor(qMax(0, box.selectedRotor())).setStuck(on);
         });
     }},
    {"mute", "on|off", "no replies", mute},
    {"delay", "MS", "every reply comes later, 0 ends it", delay},
    {"noise", "N", "N random bytes instead of the next reply", noise},
    {"error", "", "the error reply instead of the next one",
     [](BoxLine &line, const Arguments &) {
         line.setFault(LineFault::error(), 1);
         return true;
     }},
    {"hangup", "", "the line goes away, as when an adapter is pulled out or a server ends",
     [](BoxLine &line, const Arguments &) {
         line.hangUp();
         return true;
     }},
    {"restore", "", "the line comes back under the same name",
     [](BoxLine &line, const Arguments &) { return line.restore(); }},
};

QString helpLine(const QString &order, const char *meaning)
{
    return QStringLiteral("  %1 %2").arg(order, -16).arg(QLatin1String(meaning));
}

QString help()
{
    QStringList lines{QStringLiteral("Orders:")};
    for (const Order &order : Orders)
        lines +=
            helpLine(QStringLiteral("%1 %2").arg(QLatin1String(order.name), QLatin1String(order.arguments)),
                     order.meaning);
    lines += helpLine(QStringLiteral("status"), "what the box holds");
    lines += helpLine(QStringLiteral("quit"), "end the box");
    return lines.join(QLatin1Char('\n'));
}

template <typename IsOn>
QString portList(IsOn isOn)
{
    QStringList ports;
    for (int port = 0; port < SimulatedBox::PortCount; ++port) {
        if (isOn(port))
            ports += QString::number(port + 1);
    }
    return ports.isEmpty() ? QStringLiteral("none") : ports.join(QLatin1Char(' '));
}

QString rotorText(const SimulatedBox &box)
{
    const int selected = box.selectedRotor();
    if (selected < 0)
        return QStringLiteral("no rotor");
    const SimulatedRotor &rotor = box.rotor(selected);
    return QStringLiteral("rotor %1 at %2 degrees, %3")
        .arg(selected + 1)
        .arg(rotor.position(), 0, 'f', 1)
        .arg(rotor.isStuck()    ? QStringLiteral("stuck")
             : rotor.isMoving() ? QStringLiteral("turning")
                                : QStringLiteral("at rest"));
}

} // namespace

QString BoxOrders::obey(const QString &order)
{
    Arguments words = order.simplified().split(QLatin1Char(' '));
    const QString name = words.takeFirst();
    if (name.isEmpty())
        return QString();
    if (name == QLatin1String("help"))
        return help();
    if (name == QLatin1String("status"))
        return status();
    if (name == QLatin1String("quit")) {
        m_wantsToQuit = true;
        return QStringLiteral("The box ends.");
    }
    for (const Order &known : Orders) {
        if (name != QLatin1String(known.name))
            continue;
        if (known.obey(m_line, words))
            return QStringLiteral("Done: %1").arg(order.simplified());
        if (*known.arguments == '\0')
            return m_line.errorText();
        return QStringLiteral("Usage: %1 %2").arg(name, QLatin1String(known.arguments));
    }
    return QStringLiteral("Unknown order \"%1\". Try help.").arg(name);
}

QString BoxOrders::status()
{
    QString text =
        m_line.isUp() ? QStringLiteral("Line up on %1\n").arg(m_line.place()) : QStringLiteral("Line down\n");
    m_line.withBox([&text](SimulatedBox &box) {
        text += QStringLiteral("Relay box %1, receive ports: %2, transmit lines: %3, aux %4\n%5")
                    .arg(box.relayBoxId())
                    .arg(portList([&box](int port) { return box.receivePort(port); }),
                         portList([&box](int port) { return box.transmitLine(port); }),
                         box.aux() ? QStringLiteral("on") : QStringLiteral("off"), rotorText(box));
    });
    return text;
}
