// SPDX-License-Identifier: MIT
#include "device/replyreader.h"

namespace {

using Progress = ReplyReader::Progress;

constexpr int angleRounds = 3;

Progress judgeStatus(const QByteArray &bytes)
{
    if (Protocol::isErrorReply(bytes))
        return Progress::Refused;
    return Protocol::isStatusReplyComplete(bytes) ? Progress::Complete : Progress::Pending;
}

Progress judgeAngle(const QByteArray &bytes)
{
    return Protocol::decodeAngle(bytes) ? Progress::Complete : Progress::Pending;
}

} // namespace

ReplyReader ReplyReader::forStatus(const Protocol::StatusQuery &query)
{
    return {query.rounds, judgeStatus};
}

ReplyReader ReplyReader::forAngle()
{
    return {angleRounds, judgeAngle};
}

ReplyReader::Progress ReplyReader::feed(const QByteArray &line)
{
    m_bytes += line;
    --m_roundsLeft;
    const Progress progress = m_judge(m_bytes);
    return progress == Progress::Pending && m_roundsLeft <= 0 ? Progress::CutShort : progress;
}
