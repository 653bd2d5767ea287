#pragma once

#include <QObject>
#include <QUrl>

#include <functional>
#include <vector>

class QWidget;

/// The manual: HTML pages in the folder "manual" beside the program, one a window.
namespace Manual {

/// Shows a page in the desktop's browser or, where there is none, in a window of the program. Says so when the page
/// is not there.
void show(const QString &page);

/// Opens a page and tells whether it could.
using Browser = std::function<bool(const QUrl &page)>;
/// Replaces the desktop's browser; an empty function brings it back.
void setBrowser(Browser browser);

}

/// A window or menu, by its object name, and the file of its page.
struct HelpPage {
    const char *window;
    const char *page;
};

/// F1 in any window shows its page of the manual, for the life of the object: the page of the nearest window around the
/// keyboard which has one. A menu or a box without a page has that of the window it came from; for all else it is the
/// index.
class HelpKey : public QObject
{
    Q_OBJECT
public:
    explicit HelpKey(std::vector<HelpPage> pages);
    ~HelpKey() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString pageFor(const QWidget *widget) const;

    std::vector<HelpPage> m_pages;
};
