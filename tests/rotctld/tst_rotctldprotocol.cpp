// SPDX-License-Identifier: MIT
#include "rotctld/rotctldprotocol.h"

#include <QTest>

using namespace Rotctld;

namespace {

/// What a rotator at 123.4 degrees that takes every order would answer, and in brackets what it was ordered.
QByteArray answerTo(const QByteArray &line)
{
    const Request request = parse(line);
    switch (request.kind) {
    case Request::Nothing:
        return "nothing";
    case Request::Quit:
        return "closes";
    case Request::Refused:
        return answer(request, request.code);
    case Request::GetPosition:
        return position(request, 123.4);
    case Request::SetPosition:
        return '[' + QByteArray::number(request.azimuth) + ']' + answer(request, Done);
    case Request::MoveLeft:
        return "[left]" + answer(request, Done);
    case Request::MoveRight:
        return "[right]" + answer(request, Done);
    case Request::Stop:
        return "[stop]" + answer(request, Done);
    default:
        return description(request, "Model");
    }
}

} // namespace

class TestRotctldProtocol : public QObject
{
    Q_OBJECT

private slots:
    void ordersAreReadAndAnswered()
    {
        const struct
        {
            QByteArray answer;
            QList<QByteArray> lines;
        } rows[] = {{"123.40\n0.00\n", {"p", "\\get_pos\r\n", " p "}},
                    {"[90]RPRT 0\n", {"P 90 45", "P 450 0"}},
                    {"[90.5]RPRT 0\n", {"P90.5\t-3"}},
                    {"[100]RPRT 0\n", {"\\set_pos 1e2 0"}},
                    {"[180]RPRT 0\n", {"P -180 0"}},
                    {"[0]RPRT 0\n", {"P -0.0 0"}},
                    {"[stop]RPRT 0\n", {"S"}},
                    {"[left]RPRT 0\n", {"M 8 -1"}},
                    {"[right]RPRT 0\n", {"M 16 100"}},
                    {"Model\n", {"_"}},
                    {"1\n2\nmin_az=-180.000000\nmax_az=450.000000\nmin_el=-90.000000\n"
                     "max_el=180.000000\nsouth_zero=0\nrot_type=Az\ndone\n",
                     {"\\dump_state"}},
                    {"closes", {"q", "+\\quit"}},
                    {"nothing", {"\r\n"}},
                    {"RPRT -1\n",
                     {"P 450.1 0", "P -180.1 0", "P nan 0", "P 90 inf", "P 90 up", "P 9,5 0", "P 90",
                      "P 90 0 0", "pp", "M 9 50", "M 8 fast"}},
                    {"RPRT -11\n", {"M 2 50"}},
                    {"RPRT -4\n", {"K", "\\", "get_pos", "\xFF\x01"}},
                    {":\nRPRT -4\n", {"+"}},
                    {"get_pos:\nAzimuth: 123.40\nElevation: 0.00\nRPRT 0\n", {"+p"}},
                    {"get_pos:;Azimuth: 123.40;Elevation: 0.00;RPRT 0\n", {";\\get_pos"}},
                    {"[135]set_pos: 135 22.5|RPRT 0\n", {"|P  135  22.5"}},
                    {"set_pos: 500 0\nRPRT -1\n", {"+P 500 0"}},
                    {"get_info:\nInfo: Model\nRPRT 0\n", {"+_"}}};
        for (const auto &row : rows) {
            for (const QByteArray &line : row.lines)
                QCOMPARE(line + " -> " + answerTo(line), line + " -> " + row.answer);
        }
    }
};

QTEST_GUILESS_MAIN(TestRotctldProtocol)
#include "tst_rotctldprotocol.moc"
