#include "app/log.h"
#include "app/messagehandler.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>
#include <vector>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

constexpr qint64 full = 40000001;
constexpr qint64 lastThatStays = 39999999;

const QRegularExpression recordPattern(
    QStringLiteral("^\\d\\d/\\d\\d/\\d{4} \\d\\d:\\d\\d:\\d\\d - (\\d{3})(\\d{1,3}) -(\\d+) - (.*)$"));

} // namespace

class TestLog : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_home = qgetenv("HOME");
    }

    void cleanup() { qputenv("HOME", m_home); }

    void recordCarriesTimeThreadAndTheTextInUtf8()
    {
        CLog log(QStringLiteral("log"), prefix());
        log.write("conte\xFA"
                  "do [%s] %1");
        const QString line = QString::fromUtf8(contents(0));
        QVERIFY(line.endsWith(QLatin1Char('\n')));
        const QRegularExpressionMatch match = recordPattern.match(line.chopped(1));
        QVERIFY2(match.hasMatch(), qUtf8Printable(line));
        // The milliseconds stand there twice, the second time without the zeros at their end.
        QCOMPARE(match.captured(2).leftJustified(3, QLatin1Char('0')), match.captured(1));
        QCOMPARE(match.captured(3).toULongLong(), quintptr(QThread::currentThread()));
        QCOMPARE(match.captured(4), QStringLiteral("conteúdo [%s] %1"));
    }

    void recordGoesToTheFirstFileWithRoom_data()
    {
        QTest::addColumn<QVector<qint64>>("sizes");
        QTest::addColumn<int>("target");
        QTest::addColumn<bool>("appended");
        QTest::newRow("no files") << QVector<qint64>{} << 0 << false;
        QTest::newRow("first file full, second short") << QVector<qint64>{full, 100} << 1 << true;
        QTest::newRow("first file just not full, second reused")
            << QVector<qint64>{full - 1, 100} << 1 << false;
        QTest::newRow("first file at the limit, second full")
            << QVector<qint64>{lastThatStays, full} << 1 << false;
        QVector<qint64> lastInUse(40, full);
        lastInUse[39] = lastThatStays;
        QTest::newRow("last file at the limit, first reused") << lastInUse << 0 << false;
    }
    void recordGoesToTheFirstFileWithRoom()
    {
        QFETCH(QVector<qint64>, sizes);
        QFETCH(int, target);
        QFETCH(bool, appended);
        for (int i = 0; i < sizes.size(); ++i)
            makeFile(i, sizes[i]);
        CLog log(QStringLiteral("log"), prefix());
        log.write("here");
        QVERIFY(contents(target).endsWith(" - here\n"));
        for (int i = 0; i < sizes.size(); ++i)
            QVERIFY2(i == target || QFileInfo(file(i)).size() == sizes[i], qPrintable(file(i)));
        const qint64 before = appended ? sizes[target] : 0;
        QCOMPARE(QFileInfo(file(target)).size(), before + contents(target).size());
    }

    void nothingIsLoggedWhenAllFilesAreFull()
    {
        for (int i = 0; i < 40; ++i)
            makeFile(i, full);
        CLog log(QStringLiteral("log"), prefix());
        log.write("lost");
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files).size(), 40);
        for (int i = 0; i < 40; ++i)
            QCOMPARE(QFileInfo(file(i)).size(), full);
    }

    void recordsOfFourThreadsStayWholeLines()
    {
        constexpr int recordsEach = 250;
        CLog log(QStringLiteral("log"), prefix());
        std::vector<std::unique_ptr<QThread>> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back(QThread::create([&log] {
                for (int n = 0; n < recordsEach; ++n)
                    log.write("0123456789");
            }));
            threads.back()->start();
        }
        for (const auto &thread : threads)
            QVERIFY(thread->wait(10000));
        QMap<QString, int> recordsOfThread;
        QFile logFile(file(0));
        QVERIFY(logFile.open(QIODevice::ReadOnly));
        while (!logFile.atEnd()) {
            const auto match = recordPattern.match(QString::fromUtf8(logFile.readLine().chopped(1)));
            QCOMPARE(match.captured(4), QStringLiteral("0123456789"));
            ++recordsOfThread[match.captured(3)];
        }
        QCOMPARE(recordsOfThread.values(), QList<int>({recordsEach, recordsEach, recordsEach, recordsEach}));
    }

    void homeDirectoryGetsTheMissingFolders()
    {
#ifdef Q_OS_WIN
        QSKIP("the log stands in the root of drive C");
#endif
        qputenv("HOME", m_dir->path().toLocal8Bit());
        CLog log(QStringLiteral("log"));
        log.write("here");
        QVERIFY(QFileInfo(prefix() + QStringLiteral(".local/state/VextralRemoteControl/log0.txt")).size()
                > 0);

        // A folder that cannot be made loses the records and nothing else.
        makeFile(0, 5);
        qputenv("HOME", file(0).toLocal8Bit());
        CLog(QStringLiteral("log")).write("lost");
        QCOMPARE(QFileInfo(file(0)).size(), 5);
    }

    void handlerLogsLatin1AndEchoesTheBareText()
    {
#ifndef Q_OS_UNIX
        QSKIP("the echo is read through a POSIX descriptor");
#else
        CLog log(QStringLiteral("log"), prefix());
        QFile echo(prefix() + QStringLiteral("echo"));
        QVERIFY(echo.open(QIODevice::ReadWrite));
        fflush(stdout);
        const int realOutput = dup(STDOUT_FILENO);
        dup2(echo.handle(), STDOUT_FILENO);
        const QtMessageHandler testHandler = qInstallMessageHandler(nullptr);

        installMessageHandler(&log);
        qDebug("%s", "ação → 東京");
        removeMessageHandler();

        qInstallMessageHandler(testHandler);
        dup2(realOutput, STDOUT_FILENO);
        close(realOutput);
        echo.seek(0);
        QCOMPARE(echo.readAll(), QByteArray("ação → 東京\n"));
        QVERIFY(contents(0).endsWith(" - ação ? ??\n"));
#endif
    }

private:
    QString prefix() const
    {
        return m_dir->path() + QLatin1Char('/');
    }
    QString file(int index) const
    {
        return prefix() + QStringLiteral("log%1.txt").arg(index);
    }

    /// Makes a file of `size` bytes without filling the disk.
    void makeFile(int index, qint64 size) const
    {
        QFile newFile(file(index));
        QVERIFY(newFile.open(QIODevice::WriteOnly));
        QVERIFY(newFile.resize(size));
    }

    /// What stands at the end of the file, or all of a short one.
    QByteArray contents(int index) const
    {
        QFile logFile(file(index));
        if (!logFile.open(QIODevice::ReadOnly))
            return {};
        logFile.seek(qMax(qint64(0), logFile.size() - 1000));
        const QByteArray tail = logFile.readAll();
        return tail.mid(tail.lastIndexOf('\0') + 1);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QByteArray m_home;
};

QTEST_GUILESS_MAIN(TestLog)
#include "tst_log.moc"
