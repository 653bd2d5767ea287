#include "platform/report/Template.h"

QPageLayout Template::pageLayout() const
{
    QPageLayout layout(paper, landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

void Template::requireParameters(const QHash<QString, QString> &known) const
{
    for (auto used = parameters.cbegin(); used != parameters.cend(); ++used)
        if (!known.contains(used.key()))
            throw templateError(fileName, used.value(), QStringLiteral("unknown parameter {?%1}").arg(used.key()),
                                ResultCode::invalidParameter);
}

ReportError templateError(const QString &fileName, int line, const QString &what, int code)
{
    return {code, QStringLiteral("%1, line %2: %3").arg(fileName).arg(line).arg(what)};
}
