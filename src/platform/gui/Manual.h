#pragma once

#include <QObject>
#include <QUrl>

#include <functional>
#include <vector>

class QWidget;

/// The manual: HTML pages in the folder "manual" beside the program, one a window.
namespace Manual {

/// A window or menu, by its object name, and the file of its page.
struct WindowPage {
    const char *window;
    const char *page;
};
std::vector<WindowPage> windowPages();

/// The page that tells of `widget`: that of the nearest window around it which has one. A menu or a box without a page
/// has that of the window it came from; for all else it is the index.
QString pageFor(const QWidget *widget);

/// Shows a page in the desktop's browser or, where there is none, in a window of the program. Says so when the page
/// is not there.
void show(const QString &page);

/// Opens a page and tells whether it could.
using Browser = std::function<bool(const QUrl &page)>;
/// Replaces the desktop's browser; an empty function brings it back.
void setBrowser(Browser browser);

}

/// F1 in any window shows its page of the manual, for the life of the object.
class HelpKey : public QObject
{
    Q_OBJECT
public:
    HelpKey();
    ~HelpKey() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
