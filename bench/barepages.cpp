#include "barepages.h"

#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cstdio>

namespace {

using Data = QMap<int, QVariant>;

QString bareText(const ParameterInformation &record, const Data &data)
{
    char text[64] = "";
    const auto number = [&](int offset) {
        return double(data.value(record.dataId + offset).toFloat());
    };
    switch (record.type) {
    case TextValue:
        for (int i = 0; i < qMin(record.length, int(sizeof text) - 1); ++i)
            text[i] = char(number(i));
        return QString::fromUtf8(text);
    case OptionValue:
        return record.combo.key(int(number(0))) + record.unit;
    case ThreePhases:
        std::snprintf(text, sizeof text, "%.1f/%.1f/%.1f", number(0), number(1), number(2));
        break;
    case DateValue:
        std::snprintf(text, sizeof text, "%.0f/%.0f/%.0f", number(0), number(1), number(2));
        break;
    default:
        std::snprintf(text, sizeof text, "%.*f", record.type == IntegerValue ? 0 : 1, number(0));
    }
    return QString::fromUtf8(text) + record.unit;
}

class BareTable : public QTableWidget
{
public:
    explicit BareTable(const QTableWidget &model)
        : QTableWidget(model.rowCount(), model.columnCount())
    {
        setStyleSheet(model.styleSheet());
        setPalette(model.palette());
        setShowGrid(false);
        setAlternatingRowColors(true);
        verticalHeader()->hide();
        verticalHeader()->setDefaultSectionSize(model.verticalHeader()->defaultSectionSize());
        for (int column = 0; column < columnCount(); ++column)
            setColumnWidth(column, model.columnWidth(column));
    }

    void write(int row, int column, const QString &text)
    {
        if (row >= rowCount())
            setRowCount(row + 1);
        if (!item(row, column)) {
            setItem(row, column, new QTableWidgetItem(text));
            item(row, column)->setTextAlignment(Qt::AlignCenter);
        } else if (item(row, column)->text() != text) {
            item(row, column)->setText(text);
        }
    }
};

class BareAlarmPage : public BarePage
{
public:
    BareAlarmPage(const QTableWidget &model, const QStringList &texts)
        : m_table(new BareTable(model))
        , m_texts(texts)
    {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(m_table);
    }

    void write(const Data &report) override
    {
        int row = 0;
        for (int k = 0; k < m_texts.size(); ++k) {
            if (report.value(2000 + k).toInt() != 1)
                continue;
            m_table->write(row, 0, QStringLiteral("2024-01-31 12:00:00"));
            m_table->write(row++, 1, m_texts[k]);
        }
    }

private:
    BareTable *m_table;
    const QStringList m_texts;
};

class BareValuePage : public BarePage
{
public:
    explicit BareValuePage(const QList<ParameterInformation *> &records)
        : m_records(records)
    {
        auto *layout = new QVBoxLayout(this);
        for (int i = 0; i < records.size(); ++i) {
            m_labels.append(new QLabel);
            layout->addWidget(m_labels.last());
        }
    }

    void write(const Data &report) override
    {
        for (int i = 0; i < m_records.size(); ++i) {
            const QString text = bareText(*m_records[i], report);
            if (m_labels[i]->text() != text)
                m_labels[i]->setText(text);
        }
    }

private:
    const QList<ParameterInformation *> m_records;
    QVector<QLabel *> m_labels;
};

class BareSettingsPage : public BarePage
{
public:
    BareSettingsPage(const QList<QTableWidget *> &models,
                     const QList<QList<ParameterInformation *>> &records)
        : m_records(records)
    {
        auto *tabs = new QTabWidget;
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(tabs);
        for (const QTableWidget *model : models) {
            m_tables.append(new BareTable(*model));
            tabs->addTab(m_tables.last(), model->objectName());
        }
    }

    void write(const Data &report) override
    {
        for (int i = 0; i < m_tables.size(); ++i) {
            for (int row = 0; row < m_records[i].size(); ++row)
                m_tables[i]->write(row, 1, bareText(*m_records[i][row], report));
        }
    }

private:
    const QList<QList<ParameterInformation *>> m_records;
    QVector<BareTable *> m_tables;
};

class BareDiagram : public BarePage
{
public:
    BareDiagram() { setAttribute(Qt::WA_OpaquePaintEvent); }

    void write(const Data &report) override
    {
        QStringList texts;
        for (int i = 0; i < 40; ++i) {
            char text[64];
            std::snprintf(text, sizeof text, "Voltage: %.1f V",
                          double(report.value(4105 + i).toFloat()));
            texts.append(QString::fromLatin1(text));
        }
        if (texts == m_texts)
            return;
        m_texts = texts;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.fillRect(rect(), QColor(240, 240, 245));
        for (int i = 0; i < 6; ++i)
            painter.fillRect(20 + 120 * i, 200, 75, 75, QColor(41, 71, 198));
        painter.setPen(QPen(QColor(157, 172, 255), 5, Qt::DashLine, Qt::RoundCap, Qt::RoundJoin));
        for (int i = 0; i < 6; ++i)
            painter.drawLine(20, 20 * i + 20, 600, 20 * i + 20);
        painter.setPen(Qt::black);
        for (int i = 0; i < m_texts.size(); ++i)
            painter.drawText(20 + 200 * (i % 4), 300 + 16 * (i / 4), m_texts[i]);
    }

private:
    QStringList m_texts;
};

} // namespace

std::unique_ptr<BarePage> bareDiagram()
{
    return std::make_unique<BareDiagram>();
}

std::unique_ptr<BarePage> bareAlarmPage(const QTableWidget &model, const QStringList &texts)
{
    return std::make_unique<BareAlarmPage>(model, texts);
}

std::unique_ptr<BarePage> bareValuePage(const QList<ParameterInformation *> &records)
{
    return std::make_unique<BareValuePage>(records);
}

std::unique_ptr<BarePage> bareSettingsPage(const QList<QTableWidget *> &models,
                                           const QList<QList<ParameterInformation *>> &records)
{
    return std::make_unique<BareSettingsPage>(models, records);
}
