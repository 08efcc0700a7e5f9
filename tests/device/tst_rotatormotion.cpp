// SPDX-License-Identifier: MIT
#include "device/rotatormotion.h"
#include "support/motionwalk.h"

#include <QtTest>

#include <functional>
#include <map>
#include <random>

using Direction = RotatorMotion::Direction;

namespace {

/// Plays dialogues on a rotator that is nothing but its motion.
class Player
{
public:
    Player() { m_motion.lineOpened(); }

    /// Plays a dialogue and returns it as it really came out. Its lines, divided by "; ", say what happens,
    /// what is sent then and which lamps are lit: "STOP -> M115 [STOP]". Numbers are azimuths that are
    /// polled, "dial" and "display" give a target.
    QString play(const QString &dialogue)
    {
        QStringList outcome;
        for (const QString &expected : dialogue.split("; ")) {
            const QString action = expected.section(" -> ", 0, 0).section(" [", 0, 0);
            m_sent.clear();
            act(action.section(' ', 0, 0), action.section(' ', 1));
            outcome << action + (m_sent.isEmpty() ? "" : " -> " + m_sent.join(' ')) + lit();
        }
        return outcome.join("; ");
    }

private:
    void act(const QString &verb, const QString &object)
    {
        const double azimuth = object.toDouble();
        const std::map<QString, std::function<void()>> verbs = {
            {"CCW", [&] { push(Direction::CounterClockwise); }},
            {"CW", [&] { push(Direction::Clockwise); }},
            {"press",
             [&] {
                 send(m_motion.turn(object == "CW" ? Direction::Clockwise : Direction::CounterClockwise));
             }},
            {"release", [&] { m_motion.letGoOfDirection(); }},
            {"STOP", [&] { stop(); }},
            {"stop", [&] { send(m_motion.stop()); }},
            {"dial", [&] { send(m_motion.goTo(azimuth)); }},
            {"display", [&] { send(m_motion.cutShort()), send(m_motion.goTo(azimuth)); }},
            {"unplug", [&] { m_motion.lineWentAway(); }},
            {"replug", [&] { m_motion.lineOpened(); }}};
        const auto found = verbs.find(verb);
        if (found != verbs.end())
            found->second();
        else
            poll(verb.toDouble());
    }

    void push(Direction direction)
    {
        send(m_motion.turn(direction));
        m_motion.letGoOfDirection();
    }

    void stop()
    {
        m_motion.pressStop();
        send(m_motion.stopTurning());
        m_motion.letGoOfStop();
    }

    void poll(double azimuth)
    {
        const RotatorMotion::Seen seen = m_motion.poll(azimuth);
        const bool resumes = seen == RotatorMotion::Seen::EndOfTurn;
        if (resumes)
            send(m_motion.resumeDirection());
        if (seen != RotatorMotion::Seen::Nothing)
            m_motion.forgetReachedTarget();
        if (resumes)
            send(m_motion.resumeTarget());
    }

    void send(const RotatorMotion::MaybeOrder &order)
    {
        if (!order)
            return;
        const QString azimuth = QString("M%1").arg(int(order->azimuth), 3, 10, QChar('0'));
        m_sent << QStringList{azimuth, azimuth, "S", "L", "R"}.at(order->kind);
    }

    QString lit() const
    {
        QStringList names;
        if (m_motion.litDirection() == Direction::CounterClockwise)
            names << "CCW";
        if (m_motion.isStopLit())
            names << "STOP";
        if (m_motion.litDirection() == Direction::Clockwise)
            names << "CW";
        return names.isEmpty() ? QString() : " [" + names.join(' ') + "]";
    }

    RotatorMotion m_motion;
    QStringList m_sent;
};

} // namespace

class TestRotatorMotion : public QObject
{
    Q_OBJECT

private slots:
    void theRotatorObeys_data()
    {
        QTest::addColumn<QString>("dialogue"); // numbers are polled azimuths
        const char *rows[][2] = {
            {"a stop runs out clockwise", "345; 350; stop -> M360 [STOP]; 350.5; stop -> M000 [STOP]"},
            {"a stop runs out counter-clockwise",
             "15; 10; stop -> M000 [STOP]; 9.5 [STOP]; stop -> M350 [STOP]; 9.5; stop [STOP]"},
            {"a stop after a pass through north",
             "0; 180; stop -> M170 [STOP]; 0 [STOP]; stop -> M010 [STOP]; 179.5 [STOP]; stop -> M189 [STOP]"},
            {"only another whole degree is a rotation", "10.2; 10.9; STOP; 11; STOP -> M021 [STOP]; 11.5"},
            {"wind sends nothing", "100; 101; 102; 102; 99; 99"},
            {"STOP brakes after a reading that no compass has",
             "100; 105; 999; STOP -> S [STOP]; 105 [STOP]; 105"},
            {"STOP forgets a change of direction",
             "100; CCW -> L [CCW]; 95 [CCW]; CW -> M085 [CW]; -1 [CW]; STOP -> S [STOP]; 90; 90"},
            {"STOP brakes after a failed reading", "100; 105; -1; STOP -> S [STOP]; 106; 106"},
            {"a rotor that does not follow", "100; 100; 100; 100; CW -> R [CW]; 100 [CW]; 100 [CW]; 100"},
            {"a new target gives it more time",
             "100; CW -> R [CW]; 100 [CW]; 100 [CW]; dial 200 -> M200 [CW]; 100 [CW]; 100 [CW]; 100"},
            {"CW while it turns", "100; CW -> R [CW]; 106 [CW]; CW [CW]; 112 [CW]; 112"},
            {"CW, then STOP", "100; CW -> R [CW]; 106 [CW]; STOP -> M116 [STOP]; 116 [STOP]; 116"},
            {"STOP, then CW", "100; 105; STOP -> M115 [STOP]; CW -> M115 [CW]; 112 [CW]; 112 -> R [CW]"},
            {"a change of direction before the rotation is seen", "100; CW -> R [CW]; CCW -> L [CCW]"},
            {"a button held longer than the rotation",
             "100; press CW -> R [CW]; 106 [CW]; 106; release CW [CW]; 106 [CW]; 106"},
            {"a target reached", "100; dial 200 -> M200; 150; 200; 200; 205; 205"},
            {"the rotor stops on the waiting target",
             "100; 105; dial 115 -> M115 [STOP]; 115.9 [STOP]; 115.9; 120; 120"},
            {"a target not reached is sent again until STOP",
             "100; dial 200 -> M200; 150; 150 -> M200; 160; STOP -> M170 [STOP]; 165 [STOP]; 165"},
            {"the digital display's target goes out at once",
             "100; 105; display 300 -> M115 M300 [STOP]; 110 [STOP]; 300 [STOP]; 300"},
            {"the digital display's target is where the rotor stopped",
             "100; 105; display 105 -> M115 M105 [STOP]; 105 [STOP]; 105 [STOP]; 105"},
            {"a kept target is sent after a manual rotation",
             "100; dial 200 -> M200; 110; CCW -> M120 [CCW]; 115 [CCW]; 115 -> L M200 [CCW]"},
            {"a new target replaces a waiting direction",
             "100; 105; CW -> M115 [CW]; 110 [CW]; dial 200 -> M120 [STOP]; 110 -> M200"},
            {"a waiting direction is kept until the next soft stop",
             "100; 105; CW -> M115 [CW]; 105 -> R [CW]; 110 [CW]; 110 -> R [CW]; 115 [CW]; "
             "STOP -> M125 [STOP]; 120 [STOP]; 120"},
            {"STOP before a movement is seen forgets a waiting direction",
             "100; 105; CW -> M115 [CW]; 105 -> R [CW]; STOP; 110; 110"},
            {"STOP before a movement is seen forgets a target", "100; dial 200 -> M200; STOP; 150; 150"},
            {"a reading that fails at rest sends nothing of what is kept",
             "100; 105; CW -> M115 [CW]; 105 -> R [CW]; dial 200 -> M200 [CW]; -1 [CW]; 105; -1; -1; 105"},
            {"a reading that fails in the middle of a turn",
             "100; dial 200 -> M200; 105; -1; 115 -> M200; 125"},
            {"a direction asked for while a reading fails", "100; 100; -1; CW -> S [CW]; 100 -> R [CW]"},
            {"a target asked for while a reading fails", "100; 100; -1; dial 200 -> S; 100 -> M200"},
            {"a lost line forgets a target", "100; dial 200 -> M200; 120; unplug; replug; 100; 105; 105"},
            {"a lost line forgets a direction",
             "100; 105; CCW -> M115 [CCW]; unplug; replug; 100; 105; 105; CCW -> L [CCW]"},
            {"nothing is asked for without a line",
             "100; unplug; CW; dial 200; display 300; STOP; replug; 100; 105; 105"}};
        for (const auto &row : rows)
            QTest::newRow(row[0]) << row[1];
    }
    void theRotatorObeys()
    {
        QFETCH(QString, dialogue);
        QCOMPARE(Player().play(dialogue), dialogue);
    }

    void nothingUnaskedHappensOnARandomWalk()
    {
        // For a longer one: MOTION_STEPS=1000000
        const int steps =
            qEnvironmentVariableIsSet("MOTION_STEPS") ? qEnvironmentVariableIntValue("MOTION_STEPS") : 10000;
        std::mt19937 random(12);
        MotionWalk walk;
        for (int i = 0; i < steps; ++i) {
            const char *failure = walk.step(random(), random());
            QVERIFY2(!failure, qPrintable(QString("%1, in step %2").arg(failure).arg(i)));
        }
    }
};

QTEST_APPLESS_MAIN(TestRotatorMotion)
#include "tst_rotatormotion.moc"
