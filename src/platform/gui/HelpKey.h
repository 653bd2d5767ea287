#pragma once

#include <QObject>

#include <vector>

class QWidget;

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
