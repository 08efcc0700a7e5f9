// SPDX-License-Identifier: MIT
#include "line/networkaddress.h"
#include "line/networkline.h"
#include "simbox/tcpline.h"
#include "simbox/traffictext.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <memory>

using Kind = LineState::Kind;

namespace {

constexpr int patienceMs = 10000;

quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

QString local(quint16 port)
{
    return QString("tcp://127.0.0.1:%1").arg(port);
}

/// The line, as one who polls through it and listens to its signals.
class PolledLine : public NetworkLine
{
public:
    explicit PolledLine(const QString &portName) : NetworkLine(portName)
    {
        connect(this, &Line::opened, this, [this] { signalled += "opened "; });
        connect(this, &Line::lost, this, [this] { signalled += "lost "; });
        connect(this, &Line::back, this, [this] { signalled += "back "; });
    }

    bool connects()
    {
        open();
        return QTest::qWaitFor([this] { return !signalled.isEmpty(); }, patienceMs);
    }

    /// One poll; the reply, or nothing.
    QByteArray poll()
    {
        write("K0\n", 50);
        QByteArray reply;
        for (int round = 0; round < 3 && reply.isEmpty(); ++round)
            reply = readLine(50);
        noteAnswer(!reply.isEmpty());
        return reply;
    }

    QString signalled;
};

} // namespace

class TestNetworkLine : public QObject
{
    Q_OBJECT

private slots:
    void anAddressIsReadOrRefused()
    {
        const QMap<QString, QString> good = {{"tcp://mast:7000", "mast 7000"},
                                             {" TCP://mast.local:1/ ", "mast.local 1"},
                                             {"tcp://192.168.1.5:65535", "192.168.1.5 65535"},
                                             {"tcp://[::1]:7000", "::1 7000"},
                                             {"tcp://[fe80::1%eth0]:7000", "fe80::1%eth0 7000"}};
        const QString bad =
            "tcp:, tcp://, tcp://mast, tcp://mast:, tcp://:7000, tcp://mast:0, tcp://mast:65536, "
            "tcp://mast:-1, tcp://mast:7000x, tcp://mast:70000000000, tcp:mast:7000, "
            "tcp:/mast:7000, tcp://::1:7000, tcp://[::1], tcp://[::1:7000, tcp://[mast]:7000, "
            "tcp://[]:7000, tcp://[1.2.3.4]:7000, tcp://the mast:7000, tcp://me@mast:7000, "
            "tcp://mast/x:7000, tcp://mast:7000/x";
        for (const QString &text : good.keys() + bad.split(", ")) {
            QVERIFY2(NetworkAddress::isMeantBy(text), qPrintable(text));
            const auto address = NetworkAddress::parse(text);
            const QString read = address ? QString("%1 %2").arg(address->host).arg(address->port) : "";
            QCOMPARE(text + ": " + read, text + ": " + good.value(text));
        }
    }

    void aPlaceToListenIsReadOrRefused()
    {
        const QMap<QString, QString> good = {{"7000", "127.0.0.1 7000"},
                                             {"0", "127.0.0.1 0"},
                                             {"localhost:7000", "127.0.0.1 7000"},
                                             {"0.0.0.0:65535", "0.0.0.0 65535"},
                                             {"192.168.1.5:80", "192.168.1.5 80"},
                                             {"[::1]:7000", "::1 7000"},
                                             {"[::]:7000", ":: 7000"}};
        const QString bad = ",:,:7000,65536,-1,x,7000x,localhost:,::1:7000,[127.0.0.1]:7000,[::1],[::1:7000,"
                            "mast:7000,1.2.3.4.5:7000";
        for (const QString &text : good.keys() + bad.split(',')) {
            const auto place = ListenAddress::parse(text);
            const QString read =
                place ? QString("%1 %2").arg(place->address.toString()).arg(place->port) : "";
            QCOMPARE(text + ": " + read, text + ": " + good.value(text));
        }
    }

    void itTellsWhyThereIsNoConnection()
    {
        const struct
        {
            QString address;
            Kind kind;
            QString text;
        } rows[] = {{"tcp://mast", Kind::MalformedAddress, "is no address of a server"},
                    {local(freePort()), Kind::Refused, "refuses the connection"},
                    {"tcp://mast..local:7000", Kind::NameNotFound, "No server of the name"},
                    {"tcp://255.255.255.255:7000", Kind::Failed, "It is tried again"}};
        for (const auto &row : rows) {
            PolledLine line(row.address);
            QElapsedTimer time;
            time.start();
            QVERIFY(!line.open());
            QVERIFY(time.elapsed() < 50);
            QTRY_COMPARE(line.state().kind, row.kind);
            QVERIFY2(describe(line.state()).contains(row.text), qPrintable(describe(line.state())));
            QVERIFY(!line.isOpen() && !line.takesOrders() && !line.write("K1\n", 50)
                    && line.poll().isEmpty());
            QCOMPARE(line.signalled, QString());
        }
    }

    void aServerMayComeLateAndComeBack()
    {
        TcpLine box({QHostAddress::LocalHost, freePort()});
        PolledLine line(local(box.port()));
        QList<Kind> states;
        connect(&line, &Line::stateChanged, this, [&](const LineState &state) { states << state.kind; });
        line.open();
        const Kind atFirst = line.state().kind; // Wine refuses at once
        QVERIFY(atFirst == Kind::Connecting || atFirst == Kind::Refused);
        QTRY_COMPARE(states, QList<Kind>{Kind::Refused});
        QVERIFY(box.start());
        QTRY_COMPARE(line.signalled, QString("opened "));
        QVERIFY(line.isOpen() && !line.takesOrders());
        const int firstOpening = line.opening();

        QCOMPARE(trafficText(line.poll()), QString("ST=<10><00><LF>"));
        QVERIFY(line.takesOrders() && line.write("K1\n", 50) && line.write("S\r\n", 50));
        QCOMPARE(trafficText(line.poll()), QString("ST=<11><00><LF>"));
        QCOMPARE(trafficText(box.receivedBytes()), QString("K0<CR><LF>K1<CR><LF>S<CR><CR><LF>K0<CR><LF>"));

        for (int restart = 0; restart < 2; ++restart) {
            line.signalled.clear();
            box.hangUp();
            QTRY_COMPARE(line.signalled, QString("lost "));
            QVERIFY(describe(line.state()).contains("went away") && !line.isOpen());
            QVERIFY(box.restore());
            QTRY_COMPARE(line.signalled, QString("lost back "));
            QVERIFY(line.opening() > firstOpening && !line.takesOrders());
            QVERIFY(!line.poll().isEmpty() && line.takesOrders());
        }
    }

    void whatWasSentInAnOutageIsTakenBack()
    {
        TcpLine box;
        QVERIFY(box.start());
        PolledLine line(local(box.port()));
        QVERIFY(line.connects());
        QVERIFY(!line.poll().isEmpty());
        box.setFault(LineFault::silence());
        box.clearReceived();
        line.signalled.clear();

        QVERIFY(line.poll().isEmpty());
        QVERIFY(!line.takesOrders() && line.isOpen());
        QCOMPARE(line.state().kind, Kind::Silent);
        line.poll();
        line.poll();
        QVERIFY(!line.isOpen());
        QTRY_COMPARE(line.signalled, QString("lost back "));
        QTest::qWait(1100);
        QVERIFY(!line.takesOrders());
        QVERIFY(line.state().silentSeconds >= 1); // the box has been silent for longer than the connection
        for (int poll = 0; poll < 5; ++poll)
            line.poll();
        QCOMPARE(line.signalled, QString("lost back ")); // the new connection has more patience

        // The first sign of life is a reply to an old poll.
        box.withBox([](SimulatedBox &simulated) { simulated.setReceivePort(3, true); });
        box.clearFault();
        QVERIFY(line.poll().isEmpty());
        QTRY_COMPARE(line.signalled, QString("lost back lost back "));
        QCOMPARE(trafficText(line.poll()), QString("ST=<18><00><LF>"));
        QVERIFY(line.takesOrders());
    }

    void oneDisturbedReplyIsNoOutage()
    {
        TcpLine box;
        QVERIFY(box.start());
        PolledLine line(local(box.port()));
        QVERIFY(line.connects());
        // A server may hand on what the box said to the connection before.
        box.setFault(LineFault::doubled(), 1);
        QCOMPARE(trafficText(line.poll()), QString("ST=<10><00><LF>"));
        QTRY_VERIFY(line.bytesAvailable() > 0);
        box.withBox([](SimulatedBox &simulated) { simulated.setReceivePort(3, true); });
        QCOMPARE(trafficText(line.poll()), QString("ST=<18><00><LF>"));

        box.setFault(LineFault::cutAfter(3), 1);
        QVERIFY(line.poll().isEmpty());
        QVERIFY(line.takesOrders());
        line.discard();

        // A reply that comes too late does not leave the next ones behind.
        box.setFault(LineFault::delayed(250), 1);
        QVERIFY(line.poll().isEmpty());
        QTRY_VERIFY(line.bytesAvailable() > 0);
        line.poll();
        line.poll();
        QTest::qWait(50);
        QCOMPARE(line.bytesAvailable(), 0);
    }

    void itMayEndAtAnyMoment()
    {
        TcpLine box;
        QVERIFY(box.start());
        for (const QString &address : {QString("tcp://name.invalid:7000"), QString("tcp://192.0.2.1:7000"),
                                       local(box.port()), local(freePort())}) {
            for (int waitMs : {0, 1, 20}) {
                auto line = std::make_unique<PolledLine>(address);
                line->open();
                QTest::qWait(waitMs);
                line->close();
                QCOMPARE(line->state().kind, Kind::Closed);
                line->open();
                QTest::qWait(waitMs);
                line.reset();
            }
        }
        // From its own signals, which come while it waits.
        for (auto signal : {&Line::opened, &Line::lost}) {
            auto *line = new PolledLine(local(box.port()));
            connect(line, signal, this, [line] { delete line; });
            QPointer<Line> alive(line);
            line->open();
            if (signal == &Line::lost) {
                QTRY_VERIFY(line->isOpen());
                box.setFault(LineFault::hangUp(), 1);
                line->poll();
            }
            QTRY_VERIFY(!alive);
        }
    }
};

QTEST_GUILESS_MAIN(TestNetworkLine)
#include "tst_networkline.moc"
