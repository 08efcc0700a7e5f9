#include "app/log.h"
#include "support/faultydisk.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class TestLogFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { obeyPermissions(); }
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aRecordThatDoesNotFitLeavesNoPart();
    void theProgramRunsOnWithoutItsFile_data();
    void theProgramRunsOnWithoutItsFile();

private:
    QString file(int index) const { return m_folder->filePath(QStringLiteral("log%1.txt").arg(index)); }
    /// What the lines of the first file say; a part of a record shows as it is.
    QStringList lines() const
    {
        QFile log(file(0));
        if (!log.open(QIODevice::ReadOnly))
            return {};
        const QRegularExpression head("^\\d\\d/\\d\\d/\\d{4} \\d\\d:\\d\\d:\\d\\d - \\d+ -\\d+ - ");
        return QString::fromUtf8(log.readAll()).split('\n').replaceInStrings(head, QString());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestLogFaults::aRecordThatDoesNotFitLeavesNoPart()
{
    CLog log("log", m_folder->path() + '/');
    log.write("first");
    const qint64 recordSize = QFileInfo(file(0)).size();
    QStringList expected{"first", ""};
    // The disk is full after each byte of a record in turn; its time may be a few bytes shorter.
    for (qint64 room = 0; room < recordSize - 3; ++room) {
        {
            const FullDisk disk(QFileInfo(file(0)).size() + room);
            log.write("lost");
            log.write("lost too");
        }
        QCOMPARE(lines(), expected);
        log.write(QByteArray::number(room).constData());
        expected.insert(expected.size() - 1, QString::number(room));
    }
    QCOMPARE(lines(), expected);
}

void TestLogFaults::theProgramRunsOnWithoutItsFile_data()
{
    QTest::addColumn<QString>("trouble");
    QTest::newRow("a folder in its place") << "folder";
    QTest::newRow("no permission") << "permission";
    QTest::newRow("never any room") << "room";
    QTest::newRow("the next file is a folder") << "next";
}

void TestLogFaults::theProgramRunsOnWithoutItsFile()
{
    QFETCH(QString, trouble);
    if (trouble == "room") {
        QVERIFY(QFile::link("/dev/full", file(0)));
    } else if (trouble == "folder") {
        QVERIFY(QDir().mkpath(file(0)));
    } else {
        QFile first(file(0));
        QVERIFY(first.open(QIODevice::WriteOnly) && first.resize(trouble == "next" ? 39999999 : 1));
        QVERIFY(trouble == "next" ? QDir().mkpath(file(1)) : first.setPermissions(QFile::ReadOwner));
    }
    const qint64 size = QFileInfo(file(0)).size();
    CLog log("log", m_folder->path() + '/');
    log.write("lost");
    log.write("lost too");
    QCOMPARE(QFileInfo(file(0)).size(), size);

    // The next run has its file again.
    QVERIFY(QDir(file(0)).removeRecursively() && (QFile::remove(file(0)) || trouble == "folder"));
    CLog("log", m_folder->path() + '/').write("here");
    QCOMPARE(lines(), QStringList({"here", ""}));
}

QTEST_GUILESS_MAIN(TestLogFaults)
#include "tst_logfaults.moc"
