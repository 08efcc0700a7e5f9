// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMutex>
#include <QString>

#include <fstream>
#include <memory>

class Echo;

/// The log writer: forty files of at most 40,000,000 bytes, used in turn. A start goes on in the first file
/// that is not full; a file that fills up sends the next record to the following one, which is emptied first.
///
/// A record is one line, "dd/MM/yyyy hh:mm:ss - <milliseconds> -<thread> - <message>", UTF-8, ended by LF.
/// The milliseconds are written twice, the second time without trailing zeros: 7 is "007007", 70 is "07007".
/// <thread> is the address of the calling QThread in decimal. The line ends are not counted.
///
/// A file that cannot be opened loses its records silently. So does a full disk, until there is room again;
/// no part of a record stays behind.
class CLog
{
public:
    /// Logs to the program's fixed place: the root of drive C on Windows, .local/state/VextralRemoteControl
    /// under the user's home elsewhere. The directory is created when it is missing.
    explicit CLog(const QString &baseName);
    /// Logs to files whose paths are `pathPrefix` + `baseName` + number + ".txt".
    CLog(QString baseName, QString pathPrefix);
    /// Gives the messages back to Qt.
    ~CLog();

    /// Writes every Qt message from now on, whatever the system's logging rules say, and echoes it, without
    /// time and thread, to the standard output. For one log at a time.
    void install();

    /// Appends one record. `message` is Latin-1. Any thread may call.
    void write(const char *message);

private:
    Q_DISABLE_COPY(CLog)

    void handle(QtMsgType type, const QString &message);
    QByteArray timeStamp();
    QString filePath(int index) const;
    QString chooseFile();
    void open(const QString &path);
    void advanceToNextFile();
    /// After a failed write: removes the part of the line that is in the file.
    void takeBack(const QByteArray &line);

    QMutex m_mutex;
    int m_fileIndex = 0;
    int m_fileSize = 0;
    QString m_baseName;
    std::ofstream m_stream;
    QString m_pathPrefix;
    /// The second since 1970 that m_secondText shows.
    qint64 m_second = -1;
    QByteArray m_secondText;
    /// While installed.
    std::unique_ptr<Echo> m_echo;
};
