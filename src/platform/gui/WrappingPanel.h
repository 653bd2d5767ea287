#pragma once

#include <QWidget>

class QGridLayout;

/// Controls in a grid that goes on in further rows where the width is too small for its columns.
class WrappingPanel : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;

private:
    QGridLayout *grid() const;
    QList<QWidget *> controls() const;
    int widthOf(int columns) const;
    void wrap();

    int m_most = 0; ///< columns, as the form has them
};
