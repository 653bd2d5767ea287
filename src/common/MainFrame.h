#pragma once

#include <QMainWindow>

class ElidingLabel;
class ReportControl;

/// What windows below may ask of the program's frame; `mdiMain` is the one.
class MainFrame : public QMainWindow
{
    Q_OBJECT
public:
    using QMainWindow::QMainWindow;

    /// Makes `child` a child window of the frame: centred in its client area, with the toolbar's height taken off
    /// the height that is available. The child is deleted when it is closed.
    virtual void showChildWindow(QWidget *child, const QSize &size) = 0;
    /// Makes the child window, minimised or not, and the frame the active ones.
    virtual void bringToFront(QWidget *child) = 0;
    /// Shows one of the frame's hidden menus, by its name, as a pop-up, without the entries named in `leftOut`. Comes
    /// back when it is closed and what was chosen is done.
    virtual void popUp(const QString &menu, const QPoint &globalPosition, const QStringList &leftOut = {}) = 0;
    /// The state of start-up as the splash shows it: per cent and, when there is one, a line of text.
    virtual void showStartProgress(int percent, const QString &status = {}) = 0;

    /// Shows a line in the frame's status bar, shortened where it does not fit; its tooltip is the whole.
    void showStatus(const QString &text);

    /// The frame's own report control, for reports that belong to no results window.
    ReportControl &CrpMain();

signals:
    void TreeNewTool();
    void TreeNewType();
    void TreeNewLocation();

private:
    ReportControl *m_CrpMain = nullptr;
    ElidingLabel *m_status = nullptr;
};

MainFrame &theMainFrame();
void setTheMainFrame(MainFrame *frame);
