#pragma once

#include <QObject>
#include <QTimer>

class Panes;
class ListPane;
struct ListItem;

/// Says in the frame's status bar what the selected item of the list is: its whole description, part number, type and
/// place, and who has it. The database is asked once, when the selection has come to rest.
class StatusLine : public QObject
{
    Q_OBJECT
public:
    StatusLine(const Panes &panes, const ListPane &list);

private:
    void selectionChanged();
    void tell();
    const ListItem *selected() const;
    void show(const QString &text) const;

    const Panes &m_panes;
    const ListPane &m_list;
    QTimer m_rest;
};
