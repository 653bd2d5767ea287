#pragma once

#include "common/MainFrame.h"
#include "platform/gui/SharedForm.h"

#include <QHash>

class frmSplash;
class QMdiArea;
class QMdiSubWindow;

/// The program's frame: menus, toolbar and the child windows. Its commands do no work of their own; each shows a
/// dialog, calls a procedure of the explorer or of the transactions, or raises one of the frame's events.
class mdiMain : public MainFrame, public SharedForm<mdiMain>
{
    Q_OBJECT
public:
    ~mdiMain() override;

    /// Shows the splash, starts the explorer and takes the splash away again.
    void Load();
    /// Starts the explorer, or brings the open one to the front.
    void showTools();

    void showChildWindow(QWidget *child, const QSize &size) override;
    void bringToFront(QWidget *child) override;
    void popUp(const QString &menu, const QPoint &globalPosition, const QStringList &leftOut) override;
    void showStartProgress(int percent, const QString &status) override;

    /// The action of a menu entry; null when there is none of that name.
    QAction *entry(const QString &name) const { return m_entries.value(name); }
    QMenu *menu(const QString &name) const { return m_menus.value(name); }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    friend class SharedForm<mdiMain>;
    mdiMain();
    void makeMenus();
    void makeToolbar();
    void mnuWindow_AboutToShow();
    void mnuDeleteScrapped_Click();

    QMdiArea *m_clientArea;
    QToolBar *m_toolbar = nullptr;
    QHash<QString, QMenu *> m_menus;
    QHash<QString, QAction *> m_entries;
};
