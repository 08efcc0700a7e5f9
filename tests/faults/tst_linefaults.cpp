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
constexpr int floodBytes = 1000000;
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

bool sendsAnything(const LineFault &fault)
{
    int bytes = 0;
    for (const LineFault::Portion &portion : fault.portions("?", "reply", "other"))
        bytes += portion.bytes.size();
    return bytes > 0 && !fault.isLate();
}

/// What the open descriptors of this process lead to.
QStringList openDescriptors()
{
    QStringList targets;
    const QFileInfoList links =
        QDir(QStringLiteral("/proc/self/fd")).entryInfoList(QDir::Files | QDir::System);
    for (const QFileInfo &link : links)
        targets << link.symLinkTarget();
    return targets;
}

qint64 allocatedBytes()
{
    const struct mallinfo2 heap = mallinfo2();
    return qint64(heap.uordblks + heap.hblkhd);
}

/// A long form of this test is asked for by the environment.
int unplugs()
{
    const int asked = qEnvironmentVariableIntValue("VEXTRAL_UNPLUGS");
    return asked > 0 ? asked : 100;
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
    void cleanupTestCase() { m_station.reset(); }

    void aFaultIsOverWithTheNextGoodReply_data();
    void aFaultIsOverWithTheNextGoodReply();
    void aLineThatWentAwayIsTakenUpAgain_data();
    void aLineThatWentAwayIsTakenUpAgain();
    void aHundredUnplugsLeaveNothingBehind();
    void aLineThatIsAwayCostsNoLoad();

private:
    void standOn(Model model);
    void changeBox();
    QString boxState();
    QString shown();

    std::unique_ptr<LogLines> m_log;
    std::unique_ptr<Station> m_station;
    Model m_model = Model::StackSwitch;
};

/// The rows of a table share the window, which makes each start where the former one left it.
void TestLineFaults::standOn(Model model)
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

/// What the box would show on a window that knows all: its lamps, or its azimuth.
QString TestLineFaults::boxState()
{
    QString state;
    m_station->line.withBox([&](const SimulatedBox &box) {
        state = m_model == Model::Rotator
                  ? QString::number(int(box.rotor().position()))
                  : QLatin1String(box.receivePort(0) ? "RX 1" : "RX 0") + "000 TX 0000 POWER";
    });
    return state;
}

QString TestLineFaults::shown()
{
    if (m_model == Model::StackSwitch)
        return m_station->shown();
    for (const auto *display : m_station->panel()->findChildren<CRotationDigitalDisplayWidget *>()) {
        if (display->isVisible())
            return QString::number(display->value());
    }
    return QString();
}

/// Somebody works at the box itself.
void TestLineFaults::changeBox()
{
    m_station->line.withBox([](SimulatedBox &box) {
        box.setReceivePort(0, !box.receivePort(0));
        box.rotor().setPosition(box.rotor().position() + 10);
    });
}

void TestLineFaults::aFaultIsOverWithTheNextGoodReply_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<LineFault>("fault");
    // A reply that comes after its query has ended answers the next one, and so on.
    enum { Unharmed, Failed, OneBehind, FailedAndOneBehind };
    QTest::addColumn<int>("outcome");

    const auto row = [](Model model, const QString &name, const LineFault &fault, int outcome) {
        const QString prefix = model == Model::Rotator ? QStringLiteral("rotator: ") : QString();
        QTest::newRow(qPrintable(prefix + name)) << int(model) << fault << outcome;
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
        for (int bytes = 1; bytes < replyBytes; ++bytes)
            row(model, QStringLiteral("cut after %1").arg(bytes), LineFault::cutAfter(bytes), Failed);
        for (int bytes = 1; bytes < replyBytes; ++bytes)
            row(model, QStringLiteral("split after %1").arg(bytes), LineFault::splitAfter(bytes, 40),
                Unharmed);
    }
    row(Model::Rotator, "angle out of range", LineFault::angle("999"), Failed);
    for (quint32 seed : {1, 2, 3})
        row(Model::StackSwitch, QStringLiteral("noise %1").arg(seed), LineFault::noise(2000, seed), Failed);
    row(Model::StackSwitch, "noise of a few bytes", LineFault::noise(3), Failed);
    row(Model::StackSwitch, "NULs", LineFault::nuls(40), Failed);
    row(Model::StackSwitch, "a megabyte without a line end", LineFault::flood(floodBytes), Failed);
    row(Model::StackSwitch, "echo of the command", LineFault::echo(), Failed);
    row(Model::StackSwitch, "error reply", LineFault::error(), Failed);
}

void TestLineFaults::aFaultIsOverWithTheNextGoodReply()
{
    QFETCH(int, model);
    QFETCH(LineFault, fault);
    QFETCH(int, outcome);
    standOn(Model(model));
    if (QTest::currentTestFailed())
        return;
    const QString before = shown();
    const int deafMs = m_model == Model::Rotator ? rotatorDeafMs : switchDeafMs;
    Heartbeat heartbeat;

    m_station->line.setFault(fault, 1);
    m_station->poll();
    QCOMPARE(shown() == before, outcome % 2 == 0);
    if (sendsAnything(fault))
        QTRY_VERIFY(!m_station->line.traffic().last().fromProgram);
    QTest::qWait(1); // what the program has not read of it yet

    changeBox();
    const int polls = outcome < 2 ? 1 : 2;
    for (int i = 0; i < polls; ++i)
        m_station->poll();
    QCOMPARE(shown(), boxState());
    const QString query = m_model == Model::Rotator ? QStringLiteral("C ") : QStringLiteral("K0 ");
    QCOMPARE(m_station->heard() + ' ', query.repeated(1 + polls));
    QVERIFY2(heartbeat.longestPause() < deafMs + schedulingMs,
             qPrintable(QString::number(heartbeat.longestPause())));
    // A query without an answer takes up the one that is still waiting.
    if (outcome >= 2) {
        m_station->line.setFault(LineFault::silence(), 1);
        m_station->poll();
    }
}

void TestLineFaults::aLineThatWentAwayIsTakenUpAgain_data()
{
    QTest::addColumn<QString>("when");
    QTest::addColumn<QString>("asked"); // what the box may have heard besides the polls
    QTest::newRow("idle") << "idle"
                          << "";
    QTest::newRow("idle, and back at once") << "back at once"
                                            << "";
    QTest::newRow("reading") << "reading"
                             << "";
    QTest::newRow("reading, in the middle of a reply") << "in a reply"
                                                       << "";
    QTest::newRow("writing") << "writing"
                             << "K1";
    QTest::newRow("writing into what is gone") << "before writing"
                                               << "";
    QTest::newRow("with a dialog open") << "under a dialog"
                                        << "";
}

void TestLineFaults::aLineThatWentAwayIsTakenUpAgain()
{
    QFETCH(QString, when);
    QFETCH(QString, asked);
    standOn(Model::StackSwitch);
    m_station->pollEvery(pollMs);
    if (when == "under a dialog")
        m_station->press(Qt::Key_F5, Qt::ControlModifier);
    PtyLine &line = m_station->line;
    const QString goneText =
        QStringLiteral("CVextralRemoteControl - the line through %1 ").arg(line.linkPath());
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

    QCOMPARE(m_station->heard().remove("K0").simplified(), asked);
    QCOMPARE(m_log->lines().filter(goneText + "went away").size(), 1);
    QCOMPARE(m_log->lines().filter(goneText + "is back").size(), 1);
    QVERIFY2(heartbeat.longestPause() < switchDeafMs + schedulingMs,
             qPrintable(QString::number(heartbeat.longestPause())));
    if (when == "under a dialog") {
        QVERIFY(CurrentObjects::settingsDialog()->isVisible());
        CurrentObjects::settingsDialog()->reject();
    }
}

void TestLineFaults::aHundredUnplugsLeaveNothingBehind()
{
    standOn(Model::StackSwitch);
    m_station->pollEvery(quickPollMs);
    QStringList descriptors;
    qint64 bytes = 0;
    qint64 longestMs = 0;
    for (int i = 0; i <= unplugs(); ++i) {
        const qint64 before = computedMs();
        m_station->line.hangUp();
        QTRY_VERIFY(m_station->shown().endsWith('-'));
        QVERIFY(m_station->line.restore());
        QTRY_COMPARE(shown(), boxState());
        longestMs = qMax(longestMs, computedMs() - before);
        m_log->clear();
        m_station->line.clearReceived();
        if (i == 0) {
            descriptors = openDescriptors();
            bytes = allocatedBytes();
        }
    }
    m_log.reset();
    qInfo("%d unplugs: %+d descriptors, %+lld bytes, at most %lld ms of computing for one", unplugs(),
          openDescriptors().size() - descriptors.size(), allocatedBytes() - bytes, longestMs);
    // Fewer are fine: threads of Qt that are not needed any more end after a while.
    QVERIFY2(openDescriptors().size() <= descriptors.size(),
             qPrintable((descriptors + QStringList("now") + openDescriptors()).join(' ')));
    QVERIFY(allocatedBytes() - bytes < toleratedBytes);
}

void TestLineFaults::aLineThatIsAwayCostsNoLoad()
{
    standOn(Model::StackSwitch);
    m_station->pollEvery(pollMs);
    m_station->line.hangUp();
    QTRY_VERIFY(m_station->shown().endsWith('-'));
    const qint64 before = computedMs();
    QTest::qWait(1000);
    const qint64 computed = computedMs() - before;
    m_log.reset();
    qInfo("a second without the line: %lld ms of computing", computed);
    QVERIFY(computed < 100);
    QVERIFY(m_station->line.restore());
}

QTEST_MAIN(TestLineFaults)
#include "tst_linefaults.moc"
