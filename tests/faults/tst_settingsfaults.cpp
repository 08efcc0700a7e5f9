#include "settings/relayboxswap.h"
#include "settings/settings.h"
#include "support/faultydisk.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>

#include <unistd.h>

// Each of these tests puts a second copy of this program into a folder of its own, where it keeps its
// settings, and makes trouble there.

namespace {

constexpr int keyCount = 77;

/// A long form of this test is asked for by the environment.
int kills()
{
    const int asked = qEnvironmentVariableIntValue("VEXTRAL_KILLS");
    return asked > 0 ? asked : 40;
}

// ---- What the other program does ----

/// Gives all texts the same value, so that a mixture of two saves can be seen.
void save(const QString &text)
{
    CSettings settings;
    settings.comPortName = text;
    settings.names.fill(text);
    settings.memories.fill(text);
    settings.radioNames.fill(text);
    settings.save();
}

void saveUntilKilled()
{
    for (int i = 0;; ++i) {
        save(QString::number(i));
        if (i == 0)
            std::puts("ready");
        std::fflush(stdout);
    }
}

/// Changes between the boxes 1 and 2, whose texts are their numbers.
void swapUntilKilled()
{
    std::puts("ready");
    std::fflush(stdout);
    for (int box = CSettings().relayBoxId;; box = 3 - box)
        swapRelayBoxSettings(box, 3 - box);
}

/// Obeys one order a line; answers each with a line "done" after whatever was logged meanwhile.
void obeyOrders()
{
    obeyPermissions();
    std::optional<FullDisk> disk;
    const std::map<QString, std::function<void(const QString &)>> orders = {
        {"save", [](const QString &text) { save(text); }},
        {"name",
         [](const QString &text) {
             CSettings settings;
             settings.names[text.section(' ', 0, 0).toInt()] = text.section(' ', 1);
             settings.save();
         }},
        {"load", [](const QString &) { std::puts(qPrintable(CSettings().names[0])); }},
        {"swap",
         [](const QString &boxes) {
             swapRelayBoxSettings(boxes.section(' ', 0, 0).toInt(), boxes.section(' ', 1).toInt());
         }},
        {"fill", [&disk](const QString &) { disk.emplace(1000); }},
        {"empty", [&disk](const QString &) { disk.reset(); }},
    };
    for (std::string line; std::getline(std::cin, line);) {
        const QString order = QString::fromStdString(line);
        orders.at(order.section(' ', 0, 0))(order.section(' ', 1));
        std::puts("done");
        std::fflush(stdout);
    }
}

// ---- What this one sees of it ----

/// A second program in a folder, until killed or gone.
class Program
{
public:
    Program(const QString &folder, const QString &task)
    {
        const QString copy = folder + "/program";
        if (!QFile::exists(copy)
            && link(QFile::encodeName(QCoreApplication::applicationFilePath()), QFile::encodeName(copy)) != 0)
            QFile::copy(QCoreApplication::applicationFilePath(), copy);
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(copy, {task});
    }
    ~Program() { kill(); }

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    /// What came before a line like this.
    QString until(const QString &last)
    {
        QString text;
        while (m_process.canReadLine() || m_process.waitForReadyRead(10000)) {
            const QString line = QString::fromUtf8(m_process.readLine());
            if (line == last + '\n')
                return text.trimmed();
            text += line;
        }
        return "no answer";
    }

    QString say(const QString &order)
    {
        m_process.write(order.toUtf8() + '\n');
        return until("done");
    }

private:
    QProcess m_process;
};

/// The text that all of a whole file's texts have, or what is wrong with it.
QString textOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return "missing";
    const QString contents = QString::fromUtf8(file.readAll());
    const QStringList lines = contents.split('\n', Qt::SkipEmptyParts);
    if (!contents.endsWith('\n') || lines.filter("=").size() != keyCount)
        return "torn: " + contents;
    const QRegularExpression texts("^(comPortName|Names\\d+|Memories\\d+|RadioNames\\d+)=");
    QSet<QString> values;
    for (const QString &line : lines.filter(texts))
        values << line.section('=', 1);
    return values.size() == 1 ? *values.begin() : "mixed: " + contents;
}

} // namespace

class TestSettingsFaults : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aProgramThatIsKilledLeavesAWholeFile();
    void aProgramThatIsKilledKeepsTheConfigurationOfEachBox();
    void aSaveThatFailsIsToldAndRepeated_data();
    void aSaveThatFailsIsToldAndRepeated();
    void anExchangeThatFailsLeavesEachBoxItsOwn();
    void twoProgramsShareAFolder();

private:
    QString folder() const { return m_folder->path(); }
    QString file(const QString &ending = QString()) const
    {
        return folder() + "/VextralRemoteControl.ini" + ending;
    }
    void killSomeTime(const QString &task, const std::function<void()> &check);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestSettingsFaults::killSomeTime(const QString &task, const std::function<void()> &check)
{
    std::mt19937 random(1);
    for (int i = 0; i < kills() && !QTest::currentTestFailed(); ++i) {
        Program program(folder(), task);
        QCOMPARE(program.until("ready"), QString());
        usleep(random() % 3000);
        program.kill();
        check();
    }
    qInfo("%d kills, %d files left over", kills(),
          int(QDir(folder()).entryList({"VextralRemoteControl.ini.??????", "qt_temp.*"}).size()));
}

void TestSettingsFaults::aProgramThatIsKilledLeavesAWholeFile()
{
    killSomeTime("--save", [this] {
        QVERIFY2(textOf(file()).toInt() > 0 || textOf(file()) == "0", qPrintable(textOf(file())));
    });
}

void TestSettingsFaults::aProgramThatIsKilledKeepsTheConfigurationOfEachBox()
{
    Program program(folder(), "--obey");
    program.say("save 1");
    program.say("swap 1 2");
    program.say("save 2");
    killSomeTime("--swap", [this] {
        const QStringList texts{textOf(file()), textOf(file(".1")), textOf(file(".2"))};
        QVERIFY2(texts[0] == "1" || texts[0] == "2", qPrintable(texts.join("; ")));
        QVERIFY2(texts.contains("1") && texts.contains("2"), qPrintable(texts.join("; ")));
    });
}

void TestSettingsFaults::aSaveThatFailsIsToldAndRepeated_data()
{
    QTest::addColumn<QString>("trouble");
    QTest::addColumn<QString>("meanwhile"); // what the file holds then
    QTest::newRow("full disk") << "full disk"
                               << "before";
    QTest::newRow("read-only folder") << "read-only folder"
                                      << "before";
    QTest::newRow("read-only file") << "read-only file"
                                    << "before";
    QTest::newRow("folder removed") << "folder removed"
                                    << "missing";
}

void TestSettingsFaults::aSaveThatFailsIsToldAndRepeated()
{
    QFETCH(QString, trouble);
    QFETCH(QString, meanwhile);
    Program program(folder(), "--obey");
    QCOMPARE(program.say("save before"), QString());
    const QFile::Permissions all = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    if (trouble == "full disk")
        program.say("fill");
    else if (trouble == "folder removed")
        QVERIFY(QDir(folder()).removeRecursively());
    else
        QVERIFY(QFile::setPermissions(trouble.endsWith("file") ? file() : folder(), all ^ QFile::WriteOwner));

    const QString told = QString("CSettings::save() - %1 could not be written").arg(file());
    QCOMPARE(program.say("save after").split('\n').filter("save()"), QStringList(told));
    QCOMPARE(textOf(file()), meanwhile);

    program.say("empty");
    QVERIFY(QDir().mkpath(folder()));
    QVERIFY(QFile::setPermissions(folder(), all));
    QVERIFY(QFile::setPermissions(file(), all) || meanwhile == "missing");
    QCOMPARE(program.say("save again"), QString());
    QCOMPARE(textOf(file()), QString("again"));
}

void TestSettingsFaults::anExchangeThatFailsLeavesEachBoxItsOwn()
{
    Program program(folder(), "--obey");
    program.say("save 1");
    program.say("swap 1 2");
    program.say("save 2");
    program.say("swap 2 1");
    program.say("fill");
    QCOMPARE(program.say("swap 1 2"),
             QString("swapRelayBoxSettings() - the settings could not be exchanged, those of box 1 stay"));
    program.say("empty");
    program.say("swap 2 1");
    QCOMPARE(textOf(file()), QString("1"));
    program.say("swap 1 2");
    QCOMPARE(textOf(file()), QString("2"));
    QCOMPARE(textOf(file(".1")), QString("1"));
}

void TestSettingsFaults::twoProgramsShareAFolder()
{
    Program one(folder(), "--obey");
    Program other(folder(), "--obey");
    QCOMPARE(one.say("name 0 Hill"), QString());
    other.say("name 1 Valley");
    const QString told = QString("CSettings::load() - %1 was changed by another program").arg(file());
    QCOMPARE(one.say("load"), told + "\nHill");
    QCOMPARE(one.say("load"), QString("Hill"));

    Program saver(folder(), "--save");
    Program otherSaver(folder(), "--save");
    saver.until("ready");
    otherSaver.until("ready");
    for (int i = 0; i < 500; ++i)
        QVERIFY2(textOf(file()).toInt() >= 0, qPrintable(textOf(file())));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const std::map<QString, void (*)()> tasks = {
        {"--save", saveUntilKilled}, {"--swap", swapUntilKilled}, {"--obey", obeyOrders}};
    const auto task = tasks.find(application.arguments().value(1));
    if (task != tasks.end()) {
        task->second();
        return 0;
    }
    TestSettingsFaults test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_settingsfaults.moc"
