#pragma once

class CLog;

/// Sends every Qt message to `log` and echoes it, without time and thread, to the standard output. `log` must
/// live until removeMessageHandler() has been called.
void installMessageHandler(CLog *log);

/// Gives the messages back to Qt.
void removeMessageHandler();
