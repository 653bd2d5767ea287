#pragma once

#include <QElapsedTimer>
#include <QProgressBar>

/// A progress bar that counts each row of long work but repaints at most every 33 ms, so that counting costs nothing.
/// Shown from start() to finish(); the room it takes stays when it is hidden.
class ThrottledProgress : public QProgressBar
{
public:
    explicit ThrottledProgress(QWidget *parent = nullptr);

    /// For `maximum` rows to come; `text` stands in the bar.
    void start(int maximum, const QString &text = {});
    /// One more row is done.
    void step();
    void finish();

private:
    int m_counted = 0;
    QElapsedTimer m_sincePaint;
};
