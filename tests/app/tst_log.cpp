// SPDX-License-Identifier: MIT
#include "app/log.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>
#include <thread>
#include <vector>

namespace {

constexpr qint64 full = 40000001;
constexpr qint64 lastThatStays = 39999999;

} // namespace

class TestLog : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void recordCarriesTimeThreadAndTheTextInUtf8()
    {
        CLog("log", prefix()).write("a\xE7\xE3o [%s] %1");
        const QString line = contents(0);
        const QRegularExpression pattern(
            "^\\d\\d/\\d\\d/\\d{4} \\d\\d:\\d\\d:\\d\\d - (\\d{3})(\\d{1,3}) -(\\d+) - (.*)\n$");
        const QRegularExpressionMatch match = pattern.match(line);
        QVERIFY2(match.hasMatch(), qUtf8Printable(line));
        // The milliseconds stand there twice, the second time without the zeros at their end.
        QCOMPARE(match.captured(2).leftJustified(3, '0'), match.captured(1));
        QCOMPARE(match.captured(3).toULongLong(), quintptr(QThread::currentThread()));
        QCOMPARE(match.captured(4), QString("ação [%s] %1"));
    }

    void recordGoesToTheFirstFileWithRoom()
    {
        const QVector<qint64> allFull(40, full);
        QVector<qint64> lastAtTheLimit = allFull;
        lastAtTheLimit[39] = lastThatStays;
        struct Row
        {
            QVector<qint64> sizes; // of the files that are there
            int target;
            bool appended;
        };
        for (const auto &[sizes, target, appended] :
             {Row{{}, 0, false}, Row{{full, 100}, 1, true}, Row{{full - 1, 100}, 1, false},
              Row{{lastThatStays, full}, 1, false}, Row{allFull, 40, false}, Row{lastAtTheLimit, 0, false}}) {
            init();
            for (int i = 0; i < sizes.size(); ++i)
                makeFile(i, sizes[i]);
            CLog("log", prefix()).write("here");
            for (int i = 0; i < sizes.size(); ++i)
                QVERIFY2(i == target || QFileInfo(file(i)).size() == sizes[i], qPrintable(file(i)));
            const QByteArray record = contents(target);
            QCOMPARE(record.endsWith(" - here\n"), target < 40);
            QCOMPARE(QFileInfo(file(target)).size(), record.size() + (appended ? sizes[target] : 0));
        }
    }

    void recordsOfSeveralThreadsStayWholeLines()
    {
        CLog log("log", prefix());
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&log] {
                for (int record = 0; record < 5000; ++record)
                    log.write("the same text");
            });
        for (std::thread &thread : threads)
            thread.join();
        const QList<QByteArray> lines = contents(0).split('\n');
        QCOMPARE(lines.size(), 4 * 5000 + 1);
        for (const QByteArray &line : lines)
            QVERIFY2(line.isEmpty() || line.indexOf("the same text") == line.size() - 13, line.constData());
    }

private:
    QString prefix() const { return m_dir->path() + '/'; }
    QString file(int index) const { return prefix() + QString("log%1.txt").arg(index); }

    /// Makes a file of `size` bytes without filling the disk.
    void makeFile(int index, qint64 size) const
    {
        QFile newFile(file(index));
        QVERIFY(newFile.open(QIODevice::WriteOnly) && newFile.resize(size));
    }

    /// What stands in the file after what makeFile() put there.
    QByteArray contents(int index) const
    {
        QFile logFile(file(index));
        const QByteArray all = logFile.open(QIODevice::ReadOnly) ? logFile.readAll() : QByteArray();
        return all.mid(all.lastIndexOf('\0') + 1);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

QTEST_GUILESS_MAIN(TestLog)
#include "tst_log.moc"
