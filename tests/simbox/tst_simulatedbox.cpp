// SPDX-License-Identifier: MIT
#include "simbox/simulatedbox.h"
#include "simbox/traffictext.h"

#include <QtTest>

#include <functional>
#include <map>

using Model = SimulatedBox::Model;

Q_DECLARE_METATYPE(SimulatedBox::Model)

class TestSimulatedBox : public QObject
{
    Q_OBJECT

private slots:
    void commandsGetTheirReplies_data()
    {
        QTest::addColumn<Model>("model");
        QTest::addColumn<QString>("replies");
        const auto row = [](Model model, const char *dialogue, const char *replies) {
            QTest::newRow(dialogue) << model << replies;
        };
        const Model stack = Model::StackSwitch;
        row(stack, "K1 K3 K4 K3 K0", "ST=<19><00>");
        row(stack, "K1 K2 K3 K4 K5 K6 K7 K8 K0", "ST=<1F><0F>");
        row(stack, "K9 K0", "ST=<10><00>");
        row(stack, "X K K10 k0 C1", "?> ?> ?> ?> ?>");
        row(stack, "id=15 aux=1 K3 K6 K0", "ST=<F4><12>");
        // The rotor that turns is not the selected one any more.
        row(stack, "pair=1 K0 R K0 K9 K0", "ST=<10>@ ST=<10><C0> ST=<10> ");
        row(stack, "pair=1 at=10 C K9 M210 +60000 C K9 C", "AZ=010 AZ=210 AZ=010");

        const Model rotator = Model::Rotator;
        row(rotator, "K1 K5 K9 K0 KG", "ST=<10>@ T=<10>@000");
        row(rotator, "M M-01 M361 Mabc K0", "ST=<10>@");
        row(rotator, "M090 +8000 KG +1000 KG", "T=<10><C0>080 T=<10>@090");
        row(rotator, "at=350 M010 +1500 C", "AZ=005");
        row(rotator, "at=10 M350 +1500 C", "AZ=355");
        row(rotator, "at=350 M360 +5000 KG", "T=<10>@000");
        row(rotator, "at=5 R +37000 KG", "T=<10><C0>015");
        row(rotator, "overshoot=5 M090 +20000 KG", "T=<10>@095");
        row(rotator, "coast=3 L +1000 S +200 KG S +10000 KG", "T=<10><C0>348 T=<10>@347");
        row(rotator, "wind=-1 M020 +5000 KG", "T=<10>@017"); // two seconds to the target, three in the wind
        row(rotator, "at=17 wind=1 stuck=1 M090 +60000 KG", "T=<10><C0>017");
    }
    void commandsGetTheirReplies()
    {
        QFETCH(Model, model);
        SimulatedBox box(model);
        SimulatedRotor &rotor = box.rotor();
        for (int i = 0; i < SimulatedBox::RotorCount; ++i)
            box.rotor(i).setSpeed(10.0);
        const std::map<QString, std::function<void(int)>> settings = {
            {"id", [&](int id) { box.setRelayBoxId(id); }},
            {"aux", [&](int on) { box.setAux(on); }},
            {"pair", [&](int present) { box.setRotorPair(present); }},
            {"at", [&](int degrees) { rotor.setPosition(degrees); }},
            {"overshoot", [&](int degrees) { rotor.setOvershoot(degrees); }},
            {"coast", [&](int degrees) { rotor.setCoast(degrees); }},
            {"wind", [&](int degreesPerSecond) { rotor.setWind(degreesPerSecond); }},
            {"stuck", [&](int stuck) { rotor.setStuck(stuck); }}};

        QStringList replies;
        for (const QString &word : QString(QTest::currentDataTag()).split(' ')) {
            QString reply;
            if (word.contains('='))
                settings.at(word.section('=', 0, 0))(word.section('=', 1).toInt());
            else if (word.startsWith('+'))
                box.advance(word.toInt());
            else
                reply = trafficText(box.handle(word.toLatin1() + "\r\r\n") + box.handle("\r\n"));
            if (!reply.isEmpty())
                replies << reply.remove("<CR><LF>");
        }
        QTEST(replies.join(' '), "replies");
    }
};

QTEST_GUILESS_MAIN(TestSimulatedBox)
#include "tst_simulatedbox.moc"
