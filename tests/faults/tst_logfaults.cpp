#include "app/log.h"
#include "app/messagehandler.h"
#include "support/faultydisk.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <unistd.h>

class TestLogFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { obeyPermissions(); }
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aRecordThatDoesNotFitLeavesNoPart()
    {
        CLog log("log", prefix());
        log.write("first");
        const qint64 recordSize = QFileInfo(file(0)).size();
        QStringList expected{"first"};
        // The disk is full after each byte of a record in turn; its time may be a few bytes shorter.
        for (qint64 room = 0; room < recordSize - 3; ++room) {
            {
                const FullDisk disk(QFileInfo(file(0)).size() + room);
                log.write("lost");
                log.write("lost too");
            }
            log.write(QByteArray::number(room).constData());
            expected << QString::number(room);
            QCOMPARE(lines(), expected);
        }
    }

    void theProgramRunsOnWithoutItsFile_data()
    {
        QTest::addColumn<QString>("trouble");
        for (const char *trouble :
             {"a folder in its place", "no permission", "never any room", "the next one is a folder"})
            QTest::newRow(trouble) << trouble;
    }
    void theProgramRunsOnWithoutItsFile()
    {
        QFETCH(QString, trouble);
        QFile first(file(0));
        if (trouble == "a folder in its place")
            QVERIFY(QDir().mkpath(file(0)));
        else if (trouble == "never any room")
            QVERIFY(QFile::link("/dev/full", file(0)));
        else if (trouble == "no permission")
            QVERIFY(first.open(QIODevice::WriteOnly) && first.setPermissions(QFile::ReadOwner));
        else
            QVERIFY(QDir().mkpath(file(1)) && first.open(QIODevice::WriteOnly) && first.resize(39999999));
        const qint64 size = QFileInfo(file(0)).size();
        CLog log("log", prefix());
        log.write("lost");
        log.write("lost too");
        QCOMPARE(QFileInfo(file(0)).size(), size);

        // The next run has its file again.
        QVERIFY(first.remove() || QDir().rmdir(file(0)));
        CLog("log", prefix()).write("here");
        QCOMPARE(lines(), QStringList("here"));
    }

    void aTextBeyondLatin1IsEchoedWhole()
    {
        CLog log("log", prefix());
        QFile echo(prefix() + "echo");
        QVERIFY(echo.open(QIODevice::ReadWrite));
        fflush(stdout);
        const int realOutput = dup(STDOUT_FILENO);
        dup2(echo.handle(), STDOUT_FILENO);

        installMessageHandler(&log);
        qDebug("%s", "ação → 東京");
        removeMessageHandler();

        dup2(realOutput, STDOUT_FILENO);
        close(realOutput);
        echo.seek(0);
        QCOMPARE(echo.readAll(), QByteArray("ação → 東京\n"));
        QCOMPARE(lines(), QStringList("ação ? ??"));
    }

private:
    QString prefix() const { return m_folder->path() + '/'; }
    QString file(int index) const { return prefix() + QString("log%1.txt").arg(index); }
    /// What the lines of the first file say; a part of a record shows as it is.
    QStringList lines() const
    {
        QFile log(file(0));
        QString text = log.open(QIODevice::ReadOnly) ? log.readAll() : "missing";
        text.remove(QRegularExpression("\\d\\d/\\d\\d/\\d{4} \\d\\d:\\d\\d:\\d\\d - \\d+ -\\d+ - "));
        return text.split('\n', Qt::SkipEmptyParts);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestLogFaults)
#include "tst_logfaults.moc"
