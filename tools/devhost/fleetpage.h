#pragma once

#include <QWidget>

class FleetModel;
class HostDevice;
class QLabel;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

/**
 * All devices on one page, the worst first; Enter or a double click opens one.
 *
 * Threads: GUI thread only.
 */
class FleetPage : public QWidget
{
    Q_OBJECT

public:
    explicit FleetPage(FleetModel &model, QWidget *parent = nullptr);

    /** A note above the table, for example that there is no driver; empty: none. */
    void setNote(const QString &note);

    /** Whether the user may add, edit and remove devices. */
    void setMayChange(bool may);

    void choose(const HostDevice *device);

signals:
    void opened(HostDevice *device);
    void addAsked();
    void editAsked(HostDevice *device);
    void removeAsked(HostDevice *device);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QTableView *createTable();
    QWidget *createButtons();
    HostDevice *chosen() const;
    void showButtons();

    FleetModel &m_model;
    QSortFilterProxyModel *m_sorted = nullptr;
    QTableView *m_table = nullptr;
    QLabel *m_note = nullptr;
    QLabel *m_empty = nullptr;
    QPushButton *m_open = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_edit = nullptr;
    QPushButton *m_remove = nullptr;
    bool m_mayChange = true;
};
