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
#include <memory>
#include <optional>
#include <random>
#include <string>

#include <unistd.h>

// A second copy of this program, in a folder of its own, keeps its settings there, and trouble is made for
// it.

namespace {

constexpr int keyCount = 77;

/// The environment asks for the long form.
int kills()
{
    const int asked = qEnvironmentVariableIntValue("VEXTRAL_KILLS");
    return asked > 0 ? asked : 40;
}

// ---- What the other program does ----

void tell(const char *line)
{
    std::puts(line);
    std::fflush(stdout);
}

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
            tell("ready");
    }
}

/// Changes between the boxes 1 and 2.
void swapUntilKilled()
{
    tell("ready");
    for (int box = CSettings().relayBoxId;; box = 3 - box)
        swapRelayBoxSettings(box, 3 - box);
}

/// One order a line; each is answered by a line "done" after whatever was logged meanwhile.
void obeyOrders()
{
    obeyPermissions();
    std::optional<FullDisk> disk;
    for (std::string line; std::getline(std::cin, line); tell("done")) {
        const QStringList words = QString::fromStdString(line).split(' ');
        if (words[0] == "save")
            save(words[1]);
        else if (words[0] == "load")
            tell(qPrintable(CSettings().names[0]));
        else if (words[0] == "swap")
            swapRelayBoxSettings(words[1].toInt(), words[2].toInt());
        else if (words[0] == "fill")
            disk.emplace(1000);
        else if (words[0] == "empty")
            disk.reset();
    }
}

// ---- What this one sees of it ----

/// A second program in a folder, until killed.
class Program
{
public:
    Program(const QString &folder, const QString &task)
    {
        const QString copy = folder + "/program";
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

    /// What came before such a line.
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

    void ask(const QString &order)
    {
        m_process.write(order.toUtf8() + '\n');
        m_process.waitForBytesWritten();
    }

    QString say(const QString &order)
    {
        ask(order);
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
    QStringList texts = lines.filter(QRegularExpression("^(comPortName|Names|Memories|RadioNames)"));
    texts.replaceInStrings(QRegularExpression("^.*="), QString()).removeDuplicates();
    return texts.size() == 1 ? texts[0] : "mixed: " + contents;
}

bool isNumber(const QString &text)
{
    bool isOne = false;
    text.toInt(&isOne);
    return isOne;
}

} // namespace

class TestSettingsFaults : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aProgramThatIsKilledLeavesAWholeFile()
    {
        killAgainAndAgain("--save", [this] {
            const QString text = textOf(file());
            QVERIFY2(isNumber(text), qPrintable(text));
        });
    }

    void aProgramThatIsKilledKeepsTheConfigurationOfEachBox()
    {
        Program program(folder(), "--obey");
        for (const char *order : {"save 1", "swap 1 2", "save 2"})
            program.say(order);
        killAgainAndAgain("--swap", [this] {
            const QStringList texts{textOf(file()), textOf(file(".1")), textOf(file(".2"))};
            QVERIFY2(isNumber(texts[0]) && texts.contains("1") && texts.contains("2"),
                     qPrintable(texts.join("; ")));
        });
    }

    void aSaveInTroubleIsToldAndTheNextOneWrites_data()
    {
        QTest::addColumn<QString>("told");
        QTest::addColumn<QString>("contents"); // of the file then
        for (const char *trouble : {"full disk", "read-only folder", "read-only file"})
            QTest::newRow(trouble) << "CSettings::save() - %1 could not be written"
                                   << "before";
        QTest::newRow("folder removed") << "CSettings::load() - %1 was changed by another program"
                                        << "after";
    }
    void aSaveInTroubleIsToldAndTheNextOneWrites()
    {
        QFETCH(QString, told);
        QFETCH(QString, contents);
        const QString trouble = QTest::currentDataTag();
        const QFile::Permissions all = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
        Program program(folder(), "--obey");
        QCOMPARE(program.say("save before"), QString());
        if (trouble == "full disk")
            program.say("fill");
        else if (trouble == "folder removed")
            QVERIFY(QDir(folder()).removeRecursively());
        else
            QVERIFY(
                QFile::setPermissions(trouble.endsWith("file") ? file() : folder(), all ^ QFile::WriteOwner));

        QCOMPARE(program.say("save after"), told.arg(file()));
        QCOMPARE(textOf(file()), contents);

        program.say("empty");
        QVERIFY(QFile::setPermissions(folder(), all) && QFile::setPermissions(file(), all));
        QCOMPARE(program.say("save again"), QString());
        QCOMPARE(textOf(file()), QString("again"));
    }

    void anExchangeThatFailsLeavesEachBoxItsOwn()
    {
        Program program(folder(), "--obey");
        for (const char *order : {"save 1", "swap 1 2", "save 2", "swap 2 1", "fill"})
            program.say(order);
        QCOMPARE(
            program.say("swap 1 2"),
            QString("swapRelayBoxSettings() - the settings could not be exchanged, those of box 1 stay"));
        program.say("empty");
        program.say("swap 2 1");
        QCOMPARE(textOf(file()), QString("1"));
        program.say("swap 1 2");
        QCOMPARE(textOf(file()), QString("2"));
        QCOMPARE(textOf(file(".1")), QString("1"));
    }

    void twoProgramsShareAFolder()
    {
        Program one(folder(), "--obey");
        Program other(folder(), "--obey");
        one.say("save 1");
        other.say("save 2");
        QCOMPARE(one.say("load"),
                 QString("CSettings::load() - %1 was changed by another program\n2").arg(file()));
        QCOMPARE(one.say("load"), QString("2"));

        for (int i = 0; i < 2000; ++i) {
            one.ask("save 1");
            other.ask("save 2");
            QVERIFY2(isNumber(textOf(file())), qPrintable(textOf(file())));
        }
    }

private:
    QString folder() const { return m_folder->path(); }
    QString file(const QString &ending = QString()) const
    {
        return folder() + "/VextralRemoteControl.ini" + ending;
    }

    void killAgainAndAgain(const QString &task, const std::function<void()> &check) const
    {
        std::mt19937 random(1);
        for (int i = 0; i < kills() && !QTest::currentTestFailed(); ++i) {
            Program program(folder(), task);
            QCOMPARE(program.until("ready"), QString());
            usleep(random() % 3000);
            program.kill();
            check();
        }
        qInfo("%d kills left %d files behind", kills(), int(QDir(folder()).entryList(QDir::Files).size()));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QString task = application.arguments().value(1);
    if (task == "--save")
        saveUntilKilled();
    else if (task == "--swap")
        swapUntilKilled();
    else if (task == "--obey")
        obeyOrders();
    else
        return QTest::qExec(std::make_unique<TestSettingsFaults>().get(), argc, argv);
    return 0;
}

#include "tst_settingsfaults.moc"
