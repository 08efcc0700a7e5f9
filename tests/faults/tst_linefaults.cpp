// SPDX-License-Identifier: MIT
#include "app/resources.h"
#include "dialogs/settingsdialog.h"
#include "support/loglines.h"
#include "support/station.h"
#include "widgets/ledbutton.h"
#include "widgets/rotationdigitaldisplaywidget.h"

#include <QDir>
#include <QElapsedTimer>

#include <ctime>

#include <malloc.h>

Q_DECLARE_METATYPE(LineFault)
Q_DECLARE_METATYPE(SimulatedBox::Model)

namespace {

using Model = SimulatedBox::Model;

// The longest time between two turns of the event loop: the pause after a toggle, then a query's write, its
// sleep and its first read round. The angle query serves no events in any of its three rounds.
constexpr int switchDeafMs = 33 + 50 + 100 + 100;
constexpr int rotatorDeafMs = 50 + 100 + 3 * 100;
/// For a machine that is busy with other things.
constexpr int schedulingMs = 300;

int openDescriptors()
{
    return int(QDir("/proc/self/fd").entryList(QDir::Files | QDir::System).size());
}

qint64 allocatedBytes()
{
    const struct mallinfo2 heap = mallinfo2();
    return qint64(heap.uordblks + heap.hblkhd);
}

} // namespace

class TestLineFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initResources();
        startTimer(5); // the heart whose longest pause is measured
    }
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
        QTest::addColumn<Model>("model");
        QTest::addColumn<LineFault>("fault");
        QTest::addColumn<int>("outcome");
        const auto row = [](Model model, const QString &name, const LineFault &fault, int outcome) {
            QTest::newRow(qPrintable((model == Model::Rotator ? "rotator: " : "") + name))
                << model << fault << outcome;
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
        QFETCH(Model, model);
        QFETCH(LineFault, fault);
        QFETCH(int, outcome);
        standOn(model);
        if (QTest::currentTestFailed())
            return;
        const QString before = shown();

        m_station->line.setFault(fault, 1);
        m_station->poll();
        QCOMPARE(shown() == before, outcome % 2 == 0);
        const QString tag = QTest::currentDataTag();
        QTRY_VERIFY(tag.endsWith("silence") || tag.endsWith("late")
                    || !m_station->line.traffic().last().fromProgram);
        QTest::qWait(1); // what the program has not read of it yet

        m_station->changeBox();
        const int polls = outcome < 2 ? 1 : 2;
        for (int i = 0; i < polls; ++i)
            m_station->poll();
        QCOMPARE(shown(), boxState());
        const QString query = model == Model::Rotator ? "C " : "K0 ";
        QCOMPARE(m_station->heard() + ' ', query.repeated(1 + polls));
        verifyServed();
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
        m_station->pollEvery(100);
        if (when == "under a dialog")
            m_station->press(Qt::Key_F5, Qt::ControlModifier);
        BoxLine &line = m_station->line;
        line.clearReceived();
        m_log->clear();

        if (when == "reading" || when == "writing")
            line.setFault(LineFault::hangUp(), 1);
        else if (when == "in a reply")
            line.setFault(LineFault::hangUp(3), 1);
        else
            line.hangUp();
        if (when.endsWith("writing"))
            m_station->press(Qt::Key_F1);
        const auto toolTip = [this] { return m_station->panel()->powerIndicator()->toolTip(); };
        if (when != "back at once") {
            QTRY_VERIFY(shown().endsWith('-'));
            QVERIFY(line.waitUntilDown(0));
            QVERIFY(toolTip().contains("went away"));
            m_station->press(Qt::Key_F3); // is not sent when the line is back
            QTRY_VERIFY(m_log->lines().count("................. monitoring has fail") > 3);
        }
        m_station->changeBox();
        QVERIFY(line.restore());
        QTRY_COMPARE(shown(), boxState());
        QVERIFY(toolTip().startsWith("Connected"));

        QCOMPARE(m_station->heard().remove("K0").simplified(), QString(when == "writing" ? "K1" : ""));
        QCOMPARE(m_log->lines().filter(line.portName() + " went away").size(), 1);
        QCOMPARE(m_log->lines().filter(line.portName() + " is back").size(), 1);
        verifyServed();
        if (when == "under a dialog") {
            QVERIFY(CurrentObjects::settingsDialog()->isVisible());
            CurrentObjects::settingsDialog()->reject();
        }
    }

    void aHundredUnplugsCostNothing()
    {
        // The environment may ask for the long form.
        const int unplugs = qEnvironmentVariable("VEXTRAL_UNPLUGS", "100").toInt();
        standOn(Model::StackSwitch);
        m_station->pollEvery(20);
        int descriptors = 0;
        qint64 bytes = 0;
        qint64 mostMs = 0;
        qint64 awayMs = 0;
        for (int i = 0; i <= unplugs; ++i) {
            const bool isLast = i == unplugs;
            const std::clock_t before = std::clock();
            m_station->line.hangUp();
            QTRY_VERIFY(shown().endsWith('-'));
            if (isLast)
                QTest::qWait(1000); // away for longer, tried all the time
            QVERIFY(m_station->line.restore());
            QTRY_COMPARE(shown(), boxState());
            qint64 &ms = isLast ? awayMs : mostMs; // computing, of the program and of the simulated box
            ms = qMax<qint64>(ms, (std::clock() - before) * 1000 / CLOCKS_PER_SEC);
            m_log->clear();
            m_station->line.clearReceived();
            if (i == 0) {
                descriptors = openDescriptors();
                bytes = allocatedBytes();
            }
        }
        descriptors = openDescriptors() - descriptors;
        bytes = allocatedBytes() - bytes;
        m_log.reset();
        qInfo(
            "%d unplugs: %+d descriptors, %+lld bytes; ms of computing: %lld for one, %lld for a second away",
            unplugs, descriptors, bytes, mostMs, awayMs);
        QVERIFY(descriptors <= 0); // threads of Qt that are not needed any more end after a while
        QVERIFY(bytes < 64 * 1024);
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
        }
        m_station->line.clearFault();
        m_station->pollEvery(Station::noPollsMs);
        for (int polls = 0; polls < 3 && shown() != boxState(); ++polls)
            m_station->poll();
        QCOMPARE(shown(), boxState());
        m_station->line.clearReceived();
        m_sinceBeat.start();
        m_longestPauseMs = 0;
    }

    /// What the box would show on a window that knows all: its lamps, or its azimuth.
    QString boxState()
    {
        if (m_model == Model::StackSwitch)
            return m_station->boxState();
        QString azimuth;
        m_station->line.withBox(
            [&](const SimulatedBox &box) { azimuth = QString::number(int(box.rotor().position())); });
        return azimuth;
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

    void timerEvent(QTimerEvent *) override
    {
        m_longestPauseMs = qMax(m_longestPauseMs, int(m_sinceBeat.restart()));
    }

    /// The window served its events in the time that the fixed waits allow.
    void verifyServed()
    {
        timerEvent(nullptr);
        const int delayMs = m_longestPauseMs - (m_model == Model::Rotator ? rotatorDeafMs : switchDeafMs);
        m_longestDelayMs = qMax(m_longestDelayMs, delayMs);
        QVERIFY2(delayMs < schedulingMs, qPrintable(QString::number(delayMs)));
    }

    std::unique_ptr<LogLines> m_log;
    std::unique_ptr<Station> m_station;
    Model m_model = Model::StackSwitch;
    QElapsedTimer m_sinceBeat;
    int m_longestPauseMs = 0;
    int m_longestDelayMs = -rotatorDeafMs;
};

QTEST_MAIN(TestLineFaults)
#include "tst_linefaults.moc"
