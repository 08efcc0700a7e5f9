// SPDX-License-Identifier: MIT
#include "app/resources.h"
#include "support/loglines.h"
#include "support/station.h"
#include "widgets/ledbutton.h"

#include <ctime>

namespace {

constexpr int longestRetryMs = 20000;

} // namespace

// The box stands at the mast behind a real serial-to-network server, which stops, starts and hangs.
class TestNetworkFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!Ser2Net::isInstalled())
            QSKIP("ser2net is not installed");
        m_log = std::make_unique<LogLines>();
        qputenv("VEXTRAL_LINE", "ser2net");
        initResources();
        Station::writeFreshSettings();
        m_station = std::make_unique<Station>();
    }
    void cleanupTestCase()
    {
        m_station.reset();
        m_log.reset();
    }

    void aServerMayStartAfterTheProgram()
    {
        m_station->server->stop();
        Station::writeFreshSettings("tcp://127.0.0.1:1");
        m_station->startProgram();
        QTRY_VERIFY(toolTip().contains("refuses the connection"));
        QVERIFY(!m_station->controller()->isOpen());
        m_station->window.reset();

        Station::writeFreshSettings();
        QTimer::singleShot(1000, this, [this] { m_station->server->start(); });
        m_station->startProgram();
        QCOMPARE(m_station->line.commands(), QList<QByteArray>({"K0", "K0", "K9", "K0"}));
        QCOMPARE(QString(m_station->line.received().first().toHex()), QString("4b300d0a"));
    }

    void aRestartedServerIsTakenUpAgain()
    {
        m_station->pollEvery(100);
        QTRY_COMPARE(m_station->shown(), m_station->boxState());
        for (int restart = 0; restart < 2; ++restart) {
            m_station->line.clearReceived();
            m_station->server->stop();
            QTRY_VERIFY(m_station->shown().endsWith('-'));
            QVERIFY2(toolTip().contains("went away"), qPrintable(toolTip()));
            m_station->press(Qt::Key_F3); // is not sent when the server is back
            m_station->changeBox();
            m_station->server->start();
            QTRY_COMPARE_WITH_TIMEOUT(m_station->shown(), m_station->boxState(), longestRetryMs);
            QCOMPARE(m_station->heard().remove("K0").simplified(), QString());
        }
    }

    void anOrderOfAnOutageIsNotDeliveredLater()
    {
        m_station->pollEvery(100);
        QTRY_COMPARE(m_station->shown(), m_station->boxState());
        m_station->line.clearReceived();
        m_station->server->setStopped(true);
        QTRY_VERIFY(m_station->shown().endsWith('-'));
        for (int key = Qt::Key_F1; key <= Qt::Key_F8; ++key)
            m_station->press(Qt::Key(key));
        m_station->changeBox();
        QTRY_VERIFY2(toolTip().contains("has not answered for 3 s"), qPrintable(toolTip()));
        m_station->press(Qt::Key_F2);
        m_station->server->setStopped(false);

        QTRY_COMPARE_WITH_TIMEOUT(m_station->shown(), m_station->boxState(), longestRetryMs);
        QCOMPARE(m_station->heard().remove("K0").simplified(), QString());
        // The lamps are not behind.
        m_station->pollEvery(Station::noPollsMs);
        for (int change = 0; change < 2; ++change) {
            m_station->changeBox();
            m_station->poll();
            QCOMPARE(m_station->shown(), m_station->boxState());
        }
        m_station->press(Qt::Key_F1);
        m_station->poll();
        QCOMPARE(m_station->shown(), m_station->boxState());
    }

    void waitingForAServerCostsNothing()
    {
        m_station->server->stop();
        m_station->controller()->setMonitorInterval(1500);
        m_station->controller()->startMonitoring();
        QTRY_VERIFY(m_station->shown().endsWith('-'));
        const std::clock_t before = std::clock();
        QTest::qWait(5000);
        const auto ms = int((std::clock() - before) * 1000 / CLOCKS_PER_SEC);
        QVERIFY2(ms < 100, qPrintable(QString::number(ms)));
        QVERIFY2(toolTip().contains("refuses the connection"), qPrintable(toolTip()));
    }

private:
    QString toolTip() const { return m_station->panel()->powerIndicator()->toolTip(); }

    std::unique_ptr<LogLines> m_log; // keeps the log out of the test's output
    std::unique_ptr<Station> m_station;
};

QTEST_MAIN(TestNetworkFaults)
#include "tst_networkfaults.moc"
