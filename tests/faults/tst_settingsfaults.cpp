// SPDX-License-Identifier: MIT
#include "settings/settings.h"
#include "settings/settingsfile.h"
#include "support/faultydisk.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
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

/// One order a line; each is answered by a line "done" after whatever was logged meanwhile.
void obeyOrders()
{
    obeyPermissions();
    std::optional<FullDisk> disk;
    for (std::string line; std::getline(std::cin, line);) {
        const QStringList words = QString::fromStdString(line).split(' ');
        if (words[0] == "save")
            save(words[1]);
        else if (words[0] == "swap")
            SettingsFile::ofThisProgram().exchange(words[1].toInt(), words[2].toInt());
        else if (words[0] == "load")
            std::puts(qPrintable(CSettings().names[0]));
        else if (words[0] == "fill")
            disk.emplace(1000);
        else if (words[0] == "empty")
            disk.reset();
        std::puts("done");
        std::fflush(stdout);
    }
}

// ---- What this one sees of it ----

/// A second program in a folder, until killed.
class Program
{
public:
    explicit Program(const QString &folder)
    {
        const QString copy = folder + "/program";
        QFile::copy(QCoreApplication::applicationFilePath(), copy);
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(copy, {"--obey"});
    }
    ~Program()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    void ask(const QString &order)
    {
        m_process.write(order.toUtf8() + '\n');
        m_process.waitForBytesWritten();
    }

    /// What is said to the order.
    QString say(const QString &order)
    {
        ask(order);
        QString text;
        while (m_process.canReadLine() || m_process.waitForReadyRead(10000)) {
            const QString line = QString::fromUtf8(m_process.readLine());
            if (line == "done\n")
                return text.trimmed();
            text += line;
        }
        return "no answer";
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

} // namespace

class TestSettingsFaults : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aProgramThatIsKilledLeavesTheWholeConfigurationOfEachBox()
    {
        Program first(folder());
        for (const char *order : {"save 1", "swap 1 2", "save 2", "swap 2 1"})
            first.say(order);
        // The environment may ask for the long form.
        const int kills = qEnvironmentVariable("VEXTRAL_KILLS", "40").toInt();
        std::mt19937 random(1);
        for (int i = 0; i < 2 * kills; ++i) {
            {
                Program program(folder());
                const QString box = program.say("load").left(1);
                QCOMPARE(program.say("save " + box), QString());
                const QString other = QString::number(3 - box.toInt());
                QString orders = i % 2 == 0 ? "save %1\nsave %1+\n" : "swap %1 %2\nswap %2 %1\n";
                program.ask(orders.replace("%1", box).replace("%2", other).repeated(100));
                usleep(random() % 3000);
            }
            const QString texts = textOf(file()) + "; " + textOf(file(".1")) + "; " + textOf(file(".2"));
            QVERIFY2(texts.contains(QRegularExpression("^[12]\\+?; 1\\+?; 2\\+?$")), qPrintable(texts));
        }
        qInfo("%d kills left %d files behind", 2 * kills, int(QDir(folder()).entryList(QDir::Files).size()));
    }

    void whatAKilledProgramLeftIsRemovedLater()
    {
        QFile left(file(".draft1"));
        QVERIFY(left.open(QIODevice::WriteOnly));
        QVERIFY(left.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFile::FileModificationTime));
        Program(folder()).say("save 1");
        QCOMPARE(QDir(folder()).entryList({"*ini*"}, QDir::Files), QStringList("VextralRemoteControl.ini"));
    }

    void aSaveInTroubleIsToldAndTheNextOneWrites()
    {
        const QFile::Permissions all = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
        for (const QString trouble : {"full disk", "read-only folder", "read-only file", "folder removed"}) {
            init();
            const bool isRemoved = trouble == "folder removed";
            const QString protectedPath = trouble.endsWith("file") ? file() : folder();
            Program program(folder());
            QCOMPARE(program.say("save before"), QString());
            if (trouble == "full disk")
                program.say("fill");
            else if (isRemoved)
                QVERIFY(QDir(folder()).removeRecursively());
            else
                QVERIFY(QFile::setPermissions(protectedPath, all ^ QFile::WriteOwner));

            const QString told = isRemoved ? "CSettings::load() - %1 was changed by another program"
                                           : "CSettings::save() - %1 could not be written";
            QCOMPARE(trouble + ": " + program.say("save after"), trouble + ": " + told.arg(file()));
            QCOMPARE(textOf(file()), QString(isRemoved ? "after" : "before"));

            program.say("empty");
            QVERIFY(QFile::setPermissions(protectedPath, all));
            QCOMPARE(program.say("save again"), QString());
            QCOMPARE(textOf(file()), QString("again"));
        }
    }

    void anExchangeThatFailsLeavesEachBoxItsOwn()
    {
        Program program(folder());
        for (const char *order : {"save 1", "swap 1 2", "save 2", "swap 2 1", "fill"})
            program.say(order);
        QCOMPARE(
            program.say("swap 1 2"),
            QString("SettingsFile::exchange() - the settings could not be exchanged, those of box 1 stay"));
        program.say("empty");
        program.say("swap 2 1");
        QCOMPARE(textOf(file()), QString("1"));
        program.say("swap 1 2");
        QCOMPARE(textOf(file()), QString("2"));
        QCOMPARE(textOf(file(".1")), QString("1"));
    }

    void twoProgramsShareAFolder()
    {
        Program one(folder());
        Program other(folder());
        one.say("save 1");
        other.say("save 2");
        QCOMPARE(one.say("load"),
                 QString("CSettings::load() - %1 was changed by another program\n2").arg(file()));
        QCOMPARE(one.say("load"), QString("2"));

        for (int i = 0; i < 2000; ++i) {
            one.ask("save 1");
            other.ask("save 2");
            QVERIFY2(textOf(file()).toInt() > 0, qPrintable(textOf(file())));
        }
    }

private:
    QString folder() const { return m_folder->path(); }
    QString file(const QString &ending = QString()) const
    {
        return folder() + "/VextralRemoteControl.ini" + ending;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (application.arguments().value(1) != "--obey")
        return QTest::qExec(std::make_unique<TestSettingsFaults>().get(), argc, argv);
    obeyOrders();
    return 0;
}

#include "tst_settingsfaults.moc"
