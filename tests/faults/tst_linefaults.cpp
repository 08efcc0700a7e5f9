#include "app/resources.h"
#include "dialogs/settingsdialog.h"
#include "mainwindow/currentobjects.h"
#include "support/loglines.h"
#include "support/station.h"
#include "widgets/ledbutton.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTimer>

#include <ctime>

#include <malloc.h>

Q_DECLARE_METATYPE(LineFault)

namespace {

using Model = SimulatedBox::Model;

constexpr int pollMs = 100;
constexpr int quickPollMs = 20;
constexpr qint64 toleratedBytes = 64 * 1024;

// The longest time between two turns of the event loop: the pause after a toggle, then a query's write, its
// sleep and its first read round. The angle query serves no events in any of its three rounds.
constexpr int switchDeafMs = 33 + 50 + 100 + 100;
constexpr int rotatorDeafMs = 50 + 100 + 3 * 100;
/// For a machine that is busy with other things.
constexpr int schedulingMs = 300;

/// Measures the longest time in which the window served no event.
class Heartbeat
{
public:
    Heartbeat()
    {
        m_sinceBeat.start();
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { longestPause(); });
        m_timer.start(5);
    }
    int longestPause() { return m_longest = qMax(m_longest, int(m_sinceBeat.restart())); }

private:
    QTimer m_timer;
    QElapsedTimer m_sinceBeat;
    int m_longest = 0;
};

/// The environment asks for the long form.
int unplugs()
{
    const int asked = qEnvironmentVariableIntValue("VEXTRAL_UNPLUGS");
    return asked > 0 ? asked : 100;
}

int openDescriptors()
{
    return int(QDir("/proc/self/fd").entryList(QDir::Files | QDir::System).size());
}

qint64 allocatedBytes()
{
    const struct mallinfo2 heap = mallinfo2();
    return qint64(heap.uordblks + heap.hblkhd);
}

/// Milliseconds that this thread has computed.
qint64 computedMs()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * 1000 + time.tv_nsec / 1000000;
}

} // namespace

class TestLineFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void init() { m_log = std::make_unique<LogLines>(); }
    void cleanup() { m_log.reset(); }

    void cleanupTestCase()
    {
        qInfo("the window was deaf for %+d ms more than the fixed waits at most", m_longestDelayMs);
        m_station.reset();
    }

    void aFaultIsOverWithTheNextGoodReply_data()
    {
        // A reply that comes after its query has ended answers the next one, and so on.
        enum { Unharmed, Failed, OneBehind, FailedAndOneBehind };
        QTest::addColumn<int>("model");
        QTest::addColumn<LineFault>("fault");
        QTest::addColumn<int>("outcome");
        const auto row = [](Model model, const QString &name, const LineFault &fault, int outcome) {
            QTest::newRow(qPrintable((model == Model::Rotator ? "rotator: " : "") + name))
                << int(model) << fault << outcome;
        };
        for (Model model : {Model::StackSwitch, Model::Rotator}) {
            const int replyBytes = model == Model::Rotator ? 8 : 7;
            row(model, "none", LineFault::none(), Unharmed);
            row(model, "silence", LineFault::silence(), Failed);
            row(model, "delay below the rounds", LineFault::delayed(250), Unharmed);
            row(model, "delay above the rounds", LineFault::delayed(480), FailedAndOneBehind);
            row(model, "late", LineFault::late(), FailedAndOneBehind);
            row(model, "glued to its double", LineFault::doubled(), OneBehind);
            row(model, "reply of the other query", LineFault::otherReply(), Failed);
            for (int bytes = 1; bytes < replyBytes; ++bytes) {
                const QString after = QString("after %1").arg(bytes);
                row(model, "cut " + after, LineFault::cutAfter(bytes), Failed);
                row(model, "split " + after, LineFault::splitAfter(bytes, 40), Unharmed);
            }
        }
        row(Model::Rotator, "angle out of range", LineFault::angle("999"), Failed);
        const Model stack = Model::StackSwitch;
        for (quint32 seed : {1, 2, 3})
            row(stack, QString("noise %1").arg(seed), LineFault::noise(2000, seed), Failed);
        row(stack, "noise of a few bytes", LineFault::noise(3), Failed);
        row(stack, "NULs", LineFault::nuls(40), Failed);
        row(stack, "a megabyte without a line end", LineFault::flood(1000000), Failed);
        row(stack, "echo of the command", LineFault::echo(), Failed);
        row(stack, "error reply", LineFault::error(), Failed);
    }
    void aFaultIsOverWithTheNextGoodReply()
    {
        QFETCH(int, model);
        QFETCH(LineFault, fault);
        QFETCH(int, outcome);
        standOn(Model(model));
        if (QTest::currentTestFailed())
            return;
        const QString before = shown();
        Heartbeat heartbeat;

        m_station->line.setFault(fault, 1);
        m_station->poll();
        QCOMPARE(shown() == before, outcome % 2 == 0);
        const QString tag = QTest::currentDataTag();
        QTRY_VERIFY(tag.endsWith("silence") || tag.endsWith("late")
                    || !m_station->line.traffic().last().fromProgram);
        QTest::qWait(1); // what the program has not read of it yet

        changeBox();
        const int polls = outcome < 2 ? 1 : 2;
        for (int i = 0; i < polls; ++i)
            m_station->poll();
        QCOMPARE(shown(), boxState());
        const QString query = m_model == Model::Rotator ? "C " : "K0 ";
        QCOMPARE(m_station->heard() + ' ', query.repeated(1 + polls));
        verifyServed(heartbeat.longestPause());
        // A query without an answer takes up the one that is still waiting.
        if (outcome >= 2) {
            m_station->line.setFault(LineFault::silence(), 1);
            m_station->poll();
        }
    }

    void aLineThatWentAwayIsTakenUpAgain_data()
    {
        QTest::addColumn<QString>("when");
        for (const char *when : {"idle", "back at once", "reading", "in a reply", "writing",
                                 "already gone when writing", "under a dialog"})
            QTest::newRow(when) << when;
    }
    void aLineThatWentAwayIsTakenUpAgain()
    {
        QFETCH(QString, when);
        standOn(Model::StackSwitch);
        m_station->pollEvery(pollMs);
        if (when == "under a dialog")
            m_station->press(Qt::Key_F5, Qt::ControlModifier);
        PtyLine &line = m_station->line;
        line.clearReceived();
        m_log->clear();
        Heartbeat heartbeat;

        if (when == "reading" || when == "writing")
            line.setFault(LineFault::hangUp(), 1);
        else if (when == "in a reply")
            line.setFault(LineFault::hangUp(3), 1);
        else
            line.hangUp();
        if (when.endsWith("writing"))
            m_station->press(Qt::Key_F1);
        if (when != "back at once") {
            QTRY_VERIFY(m_station->shown().endsWith('-'));
            QVERIFY(line.waitUntilDown(0));
            QVERIFY(m_station->panel()->powerIndicator()->toolTip().contains("went away"));
            m_station->press(Qt::Key_F3); // is not sent when the line is back
            QTRY_VERIFY(m_log->count("................. monitoring has fail") > 3);
        }
        changeBox();
        QVERIFY(line.restore());
        QTRY_COMPARE(shown(), boxState());
        QVERIFY(m_station->panel()->powerIndicator()->toolTip().startsWith("Connected"));

        QCOMPARE(m_station->heard().remove("K0").simplified(), QString(when == "writing" ? "K1" : ""));
        QCOMPARE(m_log->lines().filter(line.linkPath() + " went away").size(), 1);
        QCOMPARE(m_log->lines().filter(line.linkPath() + " is back").size(), 1);
        verifyServed(heartbeat.longestPause());
        if (when == "under a dialog") {
            QVERIFY(CurrentObjects::settingsDialog()->isVisible());
            CurrentObjects::settingsDialog()->reject();
        }
    }

    void aHundredUnplugsCostNothing()
    {
        standOn(Model::StackSwitch);
        m_station->pollEvery(quickPollMs);
        int descriptors = 0;
        qint64 bytes = 0;
        qint64 mostMs = 0;
        for (int i = 0; i <= unplugs(); ++i) {
            const qint64 before = computedMs();
            m_station->line.hangUp();
            QTRY_VERIFY(m_station->shown().endsWith('-'));
            QVERIFY(m_station->line.restore());
            QTRY_COMPARE(shown(), boxState());
            mostMs = qMax(mostMs, computedMs() - before);
            m_log->clear();
            m_station->line.clearReceived();
            if (i == 0) {
                descriptors = openDescriptors();
                bytes = allocatedBytes();
            }
        }
        descriptors = openDescriptors() - descriptors;
        bytes = allocatedBytes() - bytes;
        m_station->line.hangUp();
        QTRY_VERIFY(m_station->shown().endsWith('-'));
        const qint64 before = computedMs();
        QTest::qWait(1000);
        const qint64 awayMs = computedMs() - before;
        QVERIFY(m_station->line.restore());

        m_log.reset();
        qInfo(
            "%d unplugs: %+d descriptors, %+lld bytes; ms of computing: %lld for one, %lld for a second away",
            unplugs(), descriptors, bytes, mostMs, awayMs);
        QVERIFY(descriptors <= 0); // threads of Qt that are not needed any more end after a while
        QVERIFY(bytes < toleratedBytes);
        QVERIFY(mostMs < 100 && awayMs < 100);
    }

private:
    /// The rows of a table share the window, which makes each start where the former one left it.
    void standOn(Model model)
    {
        if (!m_station || m_model != model) {
            m_station.reset();
            Station::writeFreshSettings();
            m_model = model;
            m_station = std::make_unique<Station>(model);
            m_station->startProgram();
            m_station->show();
            m_station->settle();
        }
        m_station->line.clearFault();
        m_station->pollEvery(Station::noPollsMs);
        for (int polls = 0; polls < 3 && shown() != boxState(); ++polls)
            m_station->poll();
        QCOMPARE(shown(), boxState());
        m_station->line.clearReceived();
    }

    /// Somebody works at the box itself.
    void changeBox()
    {
        m_station->line.withBox([](SimulatedBox &box) {
            box.setReceivePort(0, !box.receivePort(0));
            box.rotor().setPosition(box.rotor().position() + 10);
        });
    }

    /// What the box would show on a window that knows all: its lamps, or its azimuth.
    QString boxState()
    {
        QString state;
        m_station->line.withBox([&](const SimulatedBox &box) {
            state = m_model == Model::Rotator
                      ? QString::number(int(box.rotor().position()))
                      : QLatin1String(box.receivePort(0) ? "RX 1" : "RX 0") + "000 TX 0000 POWER";
        });
        return state;
    }

    QString shown()
    {
        if (m_model == Model::StackSwitch)
            return m_station->shown();
        for (const auto *display : m_station->panel()->findChildren<CRotationDigitalDisplayWidget *>()) {
            if (display->isVisible())
                return QString::number(display->value());
        }
        return QString();
    }

    /// The window served its events in the time that the fixed waits allow.
    void verifyServed(int pauseMs)
    {
        const int waitsMs = m_model == Model::Rotator ? rotatorDeafMs : switchDeafMs;
        m_longestDelayMs = qMax(m_longestDelayMs, pauseMs - waitsMs);
        QVERIFY2(pauseMs < waitsMs + schedulingMs, qPrintable(QString::number(pauseMs)));
    }

    std::unique_ptr<LogLines> m_log;
    std::unique_ptr<Station> m_station;
    Model m_model = Model::StackSwitch;
    int m_longestDelayMs = -rotatorDeafMs;
};

QTEST_MAIN(TestLineFaults)
#include "tst_linefaults.moc"
