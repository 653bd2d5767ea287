#pragma once

#include "desk/Desk.h"
#include "desk/DeskList.h"
#include "ui_DeskWindow.h"

#include <QTimer>

#include <functional>

class QToolButton;
class ReportControl;
class StockTakeReport;

/// The window of the counter: one field that always has the keyboard, who and what for, the answer, and a list. Nothing
/// in it waits for an answer: whoever holds a scanner presses no OK.
class DeskWindow : public QWidget
{
    Q_OBJECT
public:
    DeskWindow();
    ~DeskWindow() override;

    /// Is called with each sound that the desk makes, unless it is muted.
    std::function<void(Answer::Sound)> player;

    Ui::DeskWindow ui;

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    struct Button;
    enum class Page { Deeds, Choices, Missing, Result };

    void addButton(const Button &button, QWidget *panel);
    void addButtons();
    /// Runs what the attendant does. What goes wrong is said, in no box.
    void act(const std::function<void()> &action);
    void take(const QList<Answer> &answers);
    void sayWorst(const QList<Answer> &answers);
    void say(const Answer &answer);
    void showTone();
    void showState();
    void showChoices(const QList<Answer::Choice> &choices);
    void showPage(Page page);
    void shareRoom(int stretchedColumn);
    void steer(int key);
    void chooseCurrent();
    void tick(int row);
    void dismiss();
    void toggleSound();
    void primary();
    void secondary();
    void putAside();
    void printSheet();
    void printResult();
    void writeResult(const char *ending);
    /// Runs a report on paper or, where there is no printer, in a preview, and says so.
    void print(ReportControl &report, const QString &what);
    void closePreviews();
    bool isSmall() const;
    QToolButton *button(const char *name) const;
    void setCaption(const char *name, const char *caption);

    Desk m_desk;
    DeskList m_deeds;
    DeskList m_lines; ///< what is shown instead of the deeds
    QList<Answer::Choice> m_choices;
    Page m_page = Page::Deeds;
    Answer::Tone m_tone = Answer::Done;
    QTimer m_retry;
    QTimer m_rest;
    bool m_isMuted = false;
    ReportControl *m_sheet = nullptr;
    std::unique_ptr<StockTakeReport> m_result;
};
