#include "platform/report/Template.h"

QPageLayout Template::pageLayout() const
{
    QPageLayout layout(paper, landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

ReportError templateError(const QString &fileName, int line, const QString &what, int code)
{
    return {code, QStringLiteral("%1, line %2: %3").arg(fileName).arg(line).arg(what)};
}
