// What the UPS at the far end of the line has, judged by where the user and the host see it.

#include "diagram/energystate.h"
#include "farend.h"
#include "tavoview.h"
#include "upswalk.h"

#include <QLabel>
#include <QTableWidget>

using namespace registermap;

namespace {

constexpr int phaseCounts[] = { 4132, 4163, 4192 };

/** A value where it is seen: what it is called there, and its text. */
struct Seen
{
    QString label;
    QString text;
};

} // namespace

class tst_WalkValues : public WalkTest
{
    Q_OBJECT

private slots:
    // Each register has a value of its own: one that is read from its neighbour shows.
    void measurements()
    {
        for (const int phases : { 1, 3 }) {
            m_sign = phases == 1 ? -1 : 1;
            for (const FarRegister &far : m_registers) {
                for (int i = 0; i < far.count; ++i)
                    force(far.id + i, ownRaw(far, i));
            }
            for (const int id : phaseCounts)
                force(id, phases);
            QVERIFY(m_walk->poll());
            for (const Seen &seen : realTimeValues())
                check(seen, seen.text.count('/') + 1);
            for (const Seen &seen : diagramValues() + loggedValues())
                check(seen, phases);
            checkInformation();
        }
    }

    // What has codes: all words of each, everywhere.
    void states()
    {
        for (int code = 0; code < 12; ++code) {
            for (const FarRegister &far : m_registers) {
                if (far.codes.contains(code))
                    force(far.id, code);
            }
            QVERIFY(m_walk->poll());
            for (const Seen &seen : realTimeValues() + diagramValues() + loggedValues()) {
                const FarRegister far = farRegister(m_registers, seen.label);
                if (far.codes.contains(code))
                    QVERIFY2(far.isShownAs(seen.text, code), qPrintable(seen.label + seen.text));
            }
        }
    }

    // Each event is there in rounds of its own: those of the bits of its number, counted from 1.
    void events()
    {
        m_walk->view().findChild<QTabWidget *>()->setCurrentIndex(tavoView::AlarmTab);
        QMap<int, QString> before;
        for (int bit = 0; bit < 8; ++bit) { // none in the last
            for (int event = 0; event < eventCount; ++event)
                force(firstEvent + event, bit < 7 && ((event + 1) >> bit & 1) != 0);
            m_walk->takePosts();
            QVERIFY(m_walk->poll());
            const QMap<int, QString> now = farEvents();
            QCOMPARE(toldChanges(), expectedChanges(before, now));
            QStringList names = now.values();
            names.sort();
            QCOMPARE(alarmPage(), names);
            before = now;
        }
    }

private:
    void force(int id, int raw)
    {
        const QByteArray action = "register " + QByteArray::number(id) + ' ';
        QVERIFY(m_walk->ups().perform(action + QByteArray::number(raw)));
    }

    int ownRaw(const FarRegister &far, int index) const
    {
        const int id = far.id + index;
        if (far.format == Format::Character)
            return 'A' + id * 7 % 26;
        return (2000 + 10 * (id - firstMeasurement)) * (far.format == Format::Signed ? m_sign : 1);
    }

    QVector<Seen> realTimeValues() const
    {
        m_walk->view().findChild<QTabWidget *>()->setCurrentIndex(tavoView::RealDataTab);
        const auto names = m_walk->view().findChildren<QLabel *>("PanalBodyKeyName");
        const auto values = m_walk->view().findChildren<QLabel *>("PanalBodyKeyValue");
        QVector<Seen> seen;
        for (int i = 0; i < names.size(); ++i)
            seen.append({ names.at(i)->text(), values.at(i)->text() });
        return seen;
    }

    QVector<Seen> diagramValues() const
    {
        QMap<DiagramPanel, QString> places;
        places[DiagramPanel::Input] = "Input ";
        places[DiagramPanel::Bypass] = "Bypass ";
        places[DiagramPanel::Load] = "Output ";
        places[DiagramPanel::Battery] = "Battery ";
        const EnergyState state = energyState(deviceFamily(), m_walk->report());
        QVector<Seen> seen;
        for (int panel = 0; panel < diagramPanelCount; ++panel) {
            for (const auto &line : state.panels.at(std::size_t(panel)))
                seen.append({ places.value(DiagramPanel(panel)) + line.label, line.value });
        }
        return seen;
    }

    QVector<Seen> loggedValues() const
    {
        const QStringList titles = m_walk->client().getDataLogDesc();
        const QStringList texts = m_walk->client().changeLogData(m_walk->report());
        QVector<Seen> seen;
        for (int i = 0; i < titles.size(); ++i) {
            QString unit = titles.at(i).section('(', 1).chopped(titles.at(i).endsWith(')'));
            if (unit == "W") // bound by name; the value is in kW
                unit.prepend('k');
            seen.append({ titles.at(i).section('(', 0, 0), texts.value(i) + unit });
        }
        return seen;
    }

    void check(const Seen &seen, int phases)
    {
        const FarRegister far = farRegister(m_registers, seen.label);
        const QByteArray where = (seen.label + seen.text).toUtf8();
        QVERIFY2(far.id != 0, where);
        if (!far.codes.isEmpty())
            return;
        if (far.format == Format::Character) {
            QCOMPARE(seen.label + seen.text, seen.label + ownText(far));
            return;
        }
        const bool hasPhases = m_registers.value(far.id + 1).name == far.name + " 2";
        const QStringList texts = seen.text.split('/');
        QVERIFY2(texts.size() == (hasPhases ? phases : 1), where);
        for (int i = 0; i < texts.size(); ++i) {
            const int raw = ownRaw(far, i);
            // The data log does not believe a battery that is as cold as that.
            const bool isCold = far.unit == "°c" && far.value(raw) < -10 && seen.text[0] == '-';
            QVERIFY2(m_registers[far.id + i].isShownAs(texts.at(i), raw)
                         || (isCold && seen.text == "-C"),
                     where);
        }
    }

    QString ownText(const FarRegister &far) const
    {
        QString text;
        for (int i = 0; i < far.count; ++i)
            text += QChar(ownRaw(far, i));
        return text;
    }

    void checkInformation()
    {
        const QVariantMap &information = m_walk->client().deviceInformation;
        for (const FarRegister &far : m_registers) {
            for (int i = 0; i < far.count; ++i) {
                const QString key = QString::number(far.id + i);
                if (!std::count(std::begin(phaseCounts), std::end(phaseCounts), far.id + i))
                    QCOMPARE(information.value(key), QVariant(float(far.value(ownRaw(far, i)))));
            }
        }
        const FarRegister load = farRegister(m_registers, "Total output load");
        QCOMPARE(information.value("upsLoad"), QVariant(qRound(load.value(ownRaw(load, 0)))));
        const FarRegister model = farRegister(m_registers, "Device type");
        QCOMPARE(information.value("upsIdentModel").toString(), ownText(model));
    }

    // What the UPS has, by number, in lower case.
    QMap<int, QString> farEvents()
    {
        QMap<int, QString> events;
        const QString answer = m_walk->ups().ask("show events").toLower();
        for (const QString &event : answer.split(", ")) {
            if (event != "none")
                events.insert(event.section(' ', 0, 0).toInt(), event.section(' ', 1));
        }
        return events;
    }

    QStringList alarmPage() const
    {
        const auto *table = m_walk->view().findChild<QTableWidget *>("RecordTable");
        QStringList texts;
        for (int row = 0; row < table->rowCount(); ++row)
            texts.append(inFarWords(table->item(row, 1)->text()));
        texts.sort();
        return texts;
    }

    // Each change as "type alarmId alarmState, text in the event log".
    QStringList toldChanges()
    {
        const QStringList texts = m_walk->client().getEventLogDesc();
        const QString over = " disappear";
        QStringList changes;
        for (const UpsWalk::Post &post : m_walk->takePosts()) {
            QString change = QString("%1 %2").arg(post.type).arg(post.map["alarmState"].toInt());
            if (post.type == 2006) {
                const int id = post.map["alarmId"].toInt();
                QString text = texts.value(id);
                const bool isOver = text.endsWith(over);
                text = inFarWords(text.chopped(isOver ? over.size() : 0));
                change += QString(" %1 %2").arg(id).arg(text + (isOver ? over : QString()));
            }
            if (post.type == 2006 || post.type == 2009 || post.type == 2010)
                changes.append(change);
        }
        return changes;
    }

    QStringList expectedChanges(const QMap<int, QString> &before, const QMap<int, QString> &now)
    {
        QStringList changes;
        for (int event = 0; event < eventCount; ++event) {
            const bool appears = now.contains(event);
            if (appears == before.contains(event))
                continue;
            const QString name = appears ? now[event] : before[event] + " disappear";
            const bool isSilent = appears && name.startsWith("reserved");
            changes.append(QString("2006 %1 %2 %3")
                               .arg(int(appears))
                               .arg(appears ? event : eventCount + event)
                               .arg(isSilent ? QString() : name));
        }
        for (const auto &[event, type] : { std::pair(59, 2010), std::pair(82, 2009) }) {
            if (now.contains(event) != before.contains(event))
                changes.append(QString("%1 %2").arg(type).arg(int(now.contains(event))));
        }
        return changes;
    }

    int m_sign = 1; // of the signed values
    const QMap<int, FarRegister> m_registers = farMeasurements();
};

QTEST_MAIN(tst_WalkValues)
#include "tst_walkvalues.moc"
