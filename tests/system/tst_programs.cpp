// SPDX-License-Identifier: MIT
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

// Both programs as they are installed, each in a folder of its own: they start, show their window, and end
// when it is closed, whatever their surroundings are.

namespace {

const char damagedSettings[] = "[General]\nminiSize=@Variant(\\0\\0\\0\\x31\\x36\\0\\0\\0)\n";

bool write(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

} // namespace

class TestPrograms : public QObject
{
    Q_OBJECT

private slots:
    void aProgramStartsAndEnds_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("surroundings");
        for (const char *program : {STACK_SWITCH, ROTATOR}) {
            for (const char *surroundings : {"new folder", "no home", "read-only folder", "damaged settings"})
                QTest::addRow("%s, %s", qPrintable(QFileInfo(program).fileName()), surroundings)
                    << QString(program) << QString(surroundings);
        }
    }
    void aProgramStartsAndEnds()
    {
        QFETCH(QString, program);
        QFETCH(QString, surroundings);
        const QTemporaryDir folder;
        const QString copy = folder.filePath("bin/program");
        const QString settings = folder.filePath("bin/VextralRemoteControl.ini");
        QVERIFY(QDir(folder.path()).mkpath("bin") && QFile::copy(program, copy));
        if (surroundings == "damaged settings")
            QVERIFY(write(settings, damagedSettings));
        if (surroundings == "read-only folder")
            QVERIFY(QFile::setPermissions(folder.filePath("bin"), QFile::ReadOwner | QFile::ExeOwner));

        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_PLUGIN_PATH", PLUGINS);
        environment.insert("QT_QPA_GENERIC_PLUGINS", "windowcloser");
        environment.insert("XDG_RUNTIME_DIR", folder.path());
        environment.insert("HOME", surroundings == "no home" ? "/dev/null" : folder.path());
        environment.insert("LSAN_OPTIONS", environment.value("LSAN_OPTIONS") + ":print_suppressions=0");
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(copy, QStringList());
        QVERIFY(process.waitForFinished());
        QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
        const QString said = QString::fromUtf8(process.readAllStandardOutput());
        const QRegularExpression window("^Vextral - .*, \\d{2,} colours$",
                                        QRegularExpression::MultilineOption);
        QVERIFY2(said.contains(window), qPrintable(said));

        QStringList files{"VextralRemoteControl.ini"};
        if (surroundings == "read-only folder")
            files.clear();
        if (surroundings == "damaged settings")
            files << "VextralRemoteControl.ini.unreadable";
        QCOMPARE(QDir(folder.filePath("bin")).entryList({"*.ini*"}, QDir::Files), files);
        const QString log = folder.filePath(".local/state/VextralRemoteControl/VextralRemoteControl0.txt");
        QCOMPARE(QFile::exists(log), surroundings != "no home");
        QVERIFY(QFile::setPermissions(folder.filePath("bin"),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
};

QTEST_GUILESS_MAIN(TestPrograms)
#include "tst_programs.moc"
