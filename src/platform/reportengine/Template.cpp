#include "platform/reportengine/Template.h"

#include <QRectF>

QPageLayout Template::pageLayout() const
{
    QPageLayout layout(paper, landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

double Template::detailWidth() const
{
    const double width = pageLayout().fullRect(QPageLayout::Point).width() - 2 * sideMargin;
    return labels.across == 0 ? width : (width - (labels.across - 1) * labels.gap) / labels.across;
}

int Template::fieldCalled(QStringView name, int line, bool isData)
{
    const int number = fields.add(name, line, isData);
    if (number < 0)
        throw templateError(fileName, line, QStringLiteral("{%1} names no column of a table").arg(name));
    return number;
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
