// SPDX-License-Identifier: MIT
#include "rotctld/rotctldclient.h"
#include "rotctld/rotctldrotator.h"
#include "rotctld/rotctldserver.h"
#include "support/loglines.h"

#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTcpSocket>
#include <QTest>

#include <list>
#include <memory>

namespace {

/// Notes what it is ordered.
class FakeRotator : public RotctldRotator
{
public:
    QByteArray model() const override { return "Model"; }
    std::optional<double> azimuth() const override { return reading; }
    bool takesOrders() const override { return hasLine; }
    void turnTo(int degrees) override { note(QString::number(degrees)); }
    void turn(Side side) override { note(side == Side::Left ? "left" : "right"); }
    void stop() override { note("stop"); }

    QStringList orders;
    std::optional<double> reading = 12.5;
    bool hasLine = true;
    /// By the next order.
    bool losesLine = false;

private:
    void note(const QString &order)
    {
        orders << order;
        hasLine = !losesLine;
    }
};

class Client : public QTcpSocket
{
public:
    explicit Client(const RotctldServer &server) { connectToHost(QHostAddress::LocalHost, server.port()); }

    /// Sends it and returns the answer of so many lines, or what came of it.
    QByteArray say(const QByteArray &text, int lines = 1)
    {
        write(text);
        QByteArray answer;
        if (!QTest::qWaitFor([&] { return (answer += readAll()).count('\n') >= lines; }, 3000))
            answer += " and no more";
        return answer;
    }
};

} // namespace

class TestRotctldServer : public QObject
{
    Q_OBJECT

private slots:
    void init() { serve(); }

    void ordersOfAClient()
    {
        Client client(*m_server);
        QCOMPARE(client.say("p\n", 2), QByteArray("12.50\n0.00\n"));
        QCOMPARE(client.say("P 100.4 30\nP 100.4 31\nP 99.6 0\n", 3), QByteArray("RPRT 0\n").repeated(3));
        QCOMPARE(m_rotator->orders, QStringList("100")); // the others are the same whole degree
        client.say("P 359.7 0\n");
        client.say("S\n");
        client.say("P 0 0\n");
        client.say("M 8 1\n");
        client.say("M 16 1\n");
        QCOMPARE(m_rotator->orders.join(' '), QString("100 0 stop 0 left right"));

        // Each of two clients repeats its own target.
        Client other(*m_server);
        client.say("P 10 0\n");
        other.say("P 50 0\n");
        client.say("P 10 0\n");
        QCOMPARE(m_rotator->orders.mid(6).join(' '), QString("10 50"));
    }

    void withoutALineNothingIsOrdered()
    {
        Client client(*m_server);
        m_rotator->hasLine = false;
        m_rotator->reading.reset();
        QCOMPARE(client.say("p\nP 90 0\nS\nM 8 1\n", 4), QByteArray("RPRT -6\n").repeated(4));
        QVERIFY(m_rotator->orders.isEmpty());
        m_rotator->hasLine = true;
        m_rotator->losesLine = true;
        QCOMPARE(client.say("P 90 0\n"), QByteArray("RPRT -6\n"));
        m_rotator->hasLine = true;
        m_rotator->losesLine = false;
        QCOMPARE(client.say("P 90 0\n"), QByteArray("RPRT 0\n"));
        QCOMPARE(m_rotator->orders.join(' '), QString("90 90"));
    }

    void aTargetThatIsRepeatedThroughAnOutageOrByANewConnectionIsNoOrder()
    {
        constexpr int gapMs = 500;
        serve(gapMs);
        auto client = std::make_unique<Client>(*m_server);
        client->say("P 90 0\n");
        m_rotator->hasLine = false;
        for (int i = 0; i < 3; ++i) {
            QTest::qWait(gapMs / 2);
            QCOMPARE(client->say("P 90 0\n"), QByteArray("RPRT -6\n"));
        }
        m_rotator->hasLine = true;
        QCOMPARE(client->say("P 90 0\n"), QByteArray("RPRT 0\n"));
        client = std::make_unique<Client>(*m_server);
        QCOMPARE(client->say("P 90 0\n"), QByteArray("RPRT 0\n"));
        QCOMPARE(m_rotator->orders, QStringList("90"));
        client->say("P 91 0\n");
        QCOMPARE(m_rotator->orders.join(' '), QString("90 91"));
    }

    void ordersDoNotFollowEachOtherAtOnce()
    {
        Client client(*m_server);
        QElapsedTimer time;
        time.start();
        connect(&client, &Client::readyRead, this,
                [&] { client.write(client.readAll().size() > 0 ? "S\n" : ""); });
        client.write("S\n");
        QTRY_VERIFY(m_rotator->orders.size() >= 10);
        QVERIFY2(time.elapsed() >= 9 * 19, qPrintable(QString::number(time.elapsed())));
    }

    void nothingIsDoneAfterAFarewell()
    {
        Client client(*m_server);
        client.say("_\nq\nP 90 0\n");
        QTRY_COMPARE(client.state(), QAbstractSocket::UnconnectedState);
        QCOMPARE(Client(*m_server).say("_\n"), QByteArray("Model\n"));
        QVERIFY(m_rotator->orders.isEmpty());
    }

    void noClientHarmsTheOthers()
    {
        const QPair<QByteArray, QByteArray> rows[] = {
            // what one client sends, what is answered
            {QByteArray(20'000, 'p'), ""}, // a line without an end
            {QByteArray(20'000, 'p') + "\n_\n", "RPRT -1\nModel\n"},
            {QByteArray(RotctldClient::longestLine, ' ') + "\n_\n", "RPRT -1\nModel\n"},
            {"\\get_", ""},
            {QByteArray("\0\xFF\x80\x1B[\n_\n", 8), "RPRT -4\nModel\n"},
            // None is read; the system itself keeps some megabytes of answers.
            {QByteArray("1\n").repeated(100'000), "gone"}};
        for (const auto &[sent, answered] : rows) {
            const LogLines log;
            Client bad(*m_server);
            if (answered == "gone")
                bad.setReadBufferSize(1);
            bad.write(sent);
            Client good(*m_server);
            for (int i = 0; i < 20; ++i)
                QCOMPARE(good.say("p\n", 2), QByteArray("12.50\n0.00\n"));
            if (answered == "gone")
                QTRY_COMPARE_WITH_TIMEOUT(log.lines().filter("does not read its answers").size(), 1, 60000);
            else
                QCOMPARE(sent.right(20) + bad.say("", answered.count('\n')), sent.right(20) + answered);
            QCOMPARE(good.say("p\n", 2), QByteArray("12.50\n0.00\n"));
        }
    }

    void thereAreNotTooManyClients()
    {
        std::list<Client> clients;
        for (int i = 0; i < RotctldServer::mostClients; ++i)
            QCOMPARE(clients.emplace_back(*m_server).say("_\n"), QByteArray("Model\n"));
        Client oneMore(*m_server);
        const QSignalSpy refused(&oneMore, &Client::disconnected);
        QTRY_COMPARE(refused.count(), 1);
        clients.front().say("q\n", 0);
        QTRY_COMPARE(clients.front().state(), QAbstractSocket::UnconnectedState);
        QCOMPARE(Client(*m_server).say("_\n"), QByteArray("Model\n"));
    }

    void aPlaceThatCannotBeUsedIsRefused()
    {
        RotctldServer other(std::make_unique<FakeRotator>());
        const QString port = QString::number(m_server->port());
        for (const QString &place : {port, "localhost:" + port, QString("nowhere:0")})
            QVERIFY2(!other.listen(place), qPrintable(place));
        QVERIFY(other.listen("0.0.0.0:0"));
    }

    void hamlibsClientTurnsTheRotator()
    {
        const QString program = QStandardPaths::findExecutable("rotctl");
        if (program.isEmpty())
            QSKIP("rotctl of libhamlib-utils is not installed");
        QProcess client;
        client.start(program, {"-m", "2", "-r", QString("127.0.0.1:%1").arg(m_server->port()), "p", "P",
                               "222", "45", "S", "M", "8", "50", "_", "P", "-90", "0"});
        QTRY_COMPARE_WITH_TIMEOUT(client.state(), QProcess::NotRunning, 20000);
        QCOMPARE(client.readAllStandardOutput().simplified(), QByteArray("12.50 0.00 Model"));
        QCOMPARE(m_rotator->orders.join(' '), QString("222 stop left 270"));
    }

    void theProgramTakesItsOptionAndRefusesOthers()
    {
        const QPair<QStringList, QString> rows[] = {{{"--rotctld=0"}, "listening on 127.0.0.1, port "},
                                                    {{"--rotctld", "0"}, "listening on 127.0.0.1, port "},
                                                    {{"--rotctld", ""}, "is no [ADDRESS:]PORT"},
                                                    {{"--rotcltd=0"}, "Unknown option 'rotcltd'."},
                                                    {{"--rotctld"}, "Missing value after '--rotctld'."},
                                                    {{"4533"}, "Usage: "}};
        for (const auto &[options, told] : rows) {
            QProcess program;
            program.setProcessChannelMode(QProcess::MergedChannels);
            program.start(ROTATOR, options);
            QString output;
            QTRY_VERIFY2_WITH_TIMEOUT((output += program.readAll()).contains(told), qPrintable(output),
                                      10000);
            if (told.startsWith("listening") || told.startsWith("is no"))
                program.kill(); // its window is open
            QTRY_COMPARE(program.state(), QProcess::NotRunning);
            QCOMPARE(program.exitCode() == 1, program.exitStatus() == QProcess::NormalExit);
        }
    }

private:
    void serve(qint64 repeatGapMs = RepeatedTargets::usualGapMs)
    {
        auto rotator = std::make_unique<FakeRotator>();
        m_rotator = rotator.get();
        m_server = std::make_unique<RotctldServer>(std::move(rotator), nullptr, repeatGapMs);
        QVERIFY(m_server->listen("0"));
    }

    FakeRotator *m_rotator = nullptr; // of the server
    std::unique_ptr<RotctldServer> m_server;
};

QTEST_GUILESS_MAIN(TestRotctldServer)
#include "tst_rotctldserver.moc"
