#pragma once

#include "platform/gui/KeyedList.h"

class QKeyEvent;
class QTreeView;

/// The widths of the columns of a list in report style, and the whole text of a cell that is cut. Each starts with its
/// own; room that is left beside them goes to the first column until its texts are whole, then to all in proportion.
/// What the user sets stays: Ctrl with an arrow goes to the next column, with Shift it makes the column narrower or
/// wider.
class ColumnWidths : public QObject
{
    Q_OBJECT
public:
    /// `list` is the model of `view`.
    ColumnWidths(QTreeView &view, const KeyedList &list);

    /// After the columns have changed: each has its own width again.
    void reset();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool keyPressed(const QKeyEvent &key);
    void fit();
    int longestText() const;

    QTreeView &m_view;
    const KeyedList &m_list;
    std::vector<int> m_own; ///< pixels
    std::vector<bool> m_byUser;
    bool m_fitting = false;
};
