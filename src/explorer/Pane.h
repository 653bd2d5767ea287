#pragma once

#include <QTreeView>

/// What the explorer's tree and list have in common on the screen: which of them commands act on, what stands in an
/// empty one, drags.
class Pane : public QTreeView
{
    Q_OBJECT
public:
    using QTreeView::QTreeView;

    /// The selection of the pane that commands act on has the desktop's colour, that of the other one is grey.
    void setInCharge(bool inCharge);
    /// What to do first, written into the pane while it is empty.
    void setHint(const QString &hint);
    /// Things may be dragged from here and dropped here, in the two views that show stored trees.
    virtual void setMovesAllowed(bool allowed);
    bool movesAllowed() const { return dragEnabled(); }

signals:
    /// The user went to the pane, by mouse or keyboard: commands act on it from now on.
    void touched();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    /// Where the hint may stand; null when the pane is not empty.
    virtual QRect emptyRoom() const = 0;
    /// Drags what is marked by `format`, until it is dropped or given up.
    void drag(const QString &format);

private:
    QString m_hint;
};
