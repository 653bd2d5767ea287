#include "platform/reportengine/TemplateReader.h"

#include "platform/reportengine/CellTextParser.h"
#include "platform/reportengine/UsualPaper.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSizeF>
#include <QStringDecoder>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr double narrowestDetail = 10; ///< points
}

Template TemplateReader::readFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        throw ReportError(ResultCode::reportNotFound, QStringLiteral("there is no file %1").arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ReportError(ResultCode::fileError, QStringLiteral("%1: %2").arg(path, file.errorString()));
    const QByteArray content = file.read(maxBytes + 1);
    if (file.error() != QFileDevice::NoError)
        throw ReportError(ResultCode::fileError, QStringLiteral("%1: %2").arg(path, file.errorString()));
    return read(content, info.fileName());
}

Template TemplateReader::read(const QByteArray &content, const QString &fileName)
{
    if (content.size() > maxBytes)
        throw templateError(fileName, 1, QStringLiteral("the template is larger than %1 bytes").arg(maxBytes));
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString decoded = decoder(content);
    if (decoder.hasError() || decoded.contains(QChar::Null))
        throw templateError(fileName, 1, QStringLiteral("the template is no text in UTF-8"));
    TemplateReader reader(decoded, fileName);
    reader.readReport();
    return std::move(reader.m_template);
}

TemplateReader::TemplateReader(const QString &content, const QString &fileName) : m_xml(content)
{
    m_xml.setNamespaceProcessing(false);
    m_template.fileName = fileName;
}

void TemplateReader::readReport()
{
    const auto page = [this] {
        if (text("version") != QStringLiteral("1"))
            fail(QStringLiteral("the template is not of version 1"));
        m_template.title = text("title");
        readPage();
        m_template.font = has("font") ? text("font") : QStringLiteral("Liberation Sans");
        m_template.size = number("size", 5, 24, m_template.size);
        readChildren({
            {"data", "", [this] { readData(); }},
            {"columns", "", [this] { readColumns(); }},
            {"reportheader", "when", [this] { readBand(m_template.reportHeader, -1, true); }},
            {"pageheader", "when", [this] { readBand(m_template.pageHeader, -1); }},
            {"group", "by per sort keep repeat newpage", [this] { readGroup(); }, true},
            {"detail", "when shade across height gap", [this] { readDetail(); }},
            {"reportfooter", "when", [this] { readBand(m_template.reportFooter, -1, true); }},
            {"pagefooter", "when", [this] { readBand(m_template.pageFooter, -1); }},
            {"nodata", "when", [this] { readBand(m_template.noData, -1); }},
        });
        m_line = int(m_xml.lineNumber());
        checkComplete();
    };
    readChildren({{"report", "version title paper width height orientation margin sidemargin font size", page}});
}

void TemplateReader::readPage()
{
    const bool isOwnSize = has("width") || has("height");
    if (isOwnSize)
        m_template.paper = ownPaper();
    else if (!has("paper"))
        m_template.paper = UsualPaper::size();
    else
        m_template.paper = QPageSize(QPageSize::PageSizeId(choice("paper",
                                                                  {{"Letter", QPageSize::Letter},
                                                                   {"Legal", QPageSize::Legal},
                                                                   {"A3", QPageSize::A3},
                                                                   {"A4", QPageSize::A4},
                                                                   {"A5", QPageSize::A5}},
                                                                  QPageSize::Letter)));
    m_template.landscape = choice("orientation", {{"portrait", false}, {"landscape", true}}, false);
    // Label printers print close to the edge; others leave it white.
    m_template.margin = length("margin", isOwnSize ? 0 : 18, 144, m_template.margin);
    m_template.sideMargin = length("sidemargin", 0, 144, m_template.margin);
}

QPageSize TemplateReader::ownPaper() const
{
    constexpr double smallest = 20;
    constexpr double largest = 4000;
    if (has("paper") || !has("width") || !has("height"))
        fail(QStringLiteral("a page has either paper=\"...\" or width=\"...\" and height=\"...\""));
    // PDF files and printer drivers know whole points.
    const QSizeF size(std::round(length("width", smallest, largest, 0)),
                      std::round(length("height", smallest, largest, 0)));
    return QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch);
}

void TemplateReader::readData()
{
    const auto from = [this] {
        m_template.table = requiredText("table");
        m_template.tableLine = m_line;
        readEmpty();
    };
    readChildren({
        {"from", "table", from},
        {"join", "table on kind last", [this] { readJoin(); }, true},
        {"where", "", [this] { m_template.where = formula(readText()); }},
        {"sort", "by order", [this] { readSort(); }, true},
    });
}

void TemplateReader::readJoin()
{
    if (m_template.joins.size() + 1 == maxTables)
        fail(QStringLiteral("more than %1 tables").arg(maxTables));
    static const QRegularExpression andWord(QStringLiteral("\\s+and\\s+"), QRegularExpression::CaseInsensitiveOption);
    Join join;
    join.table = requiredText("table");
    join.line = m_line;
    join.keepsUnmatched = choice("kind", {{"left", true}, {"inner", false}}, true);
    const QString on = requiredText("on");
    const QStringList pairs = on.split(andWord);
    for (const QString &pair : pairs) {
        const QStringList sides = pair.split('=');
        if (sides.size() != 2)
            fail(QStringLiteral("on=\"%1\" is not \"Table.Column = Table.Column\"").arg(on));
        join.equalFields.append({m_template.fieldCalled(sides[0], m_line), m_template.fieldCalled(sides[1], m_line)});
    }
    if (has("last"))
        join.lastBy = fieldReference("last");
    m_template.joins.append(join);
    readEmpty();
}

void TemplateReader::readSort()
{
    const QString order = has("order") ? text("order") : QStringLiteral("ascending");
    if (order != QStringLiteral("ascending") && order != QStringLiteral("descending"))
        fail(ResultCode::invalidSortDirection, QStringLiteral("unknown order \"%1\"").arg(order));
    const int field = fieldReference("by");
    m_template.fields.at(field).isData = true;
    m_template.sorting.append({field, order == QStringLiteral("descending")});
    readEmpty();
}

void TemplateReader::readColumns()
{
    const auto column = [this] {
        if (m_template.columns.size() == maxColumns)
            fail(QStringLiteral("more than %1 columns").arg(maxColumns));
        GridColumn column;
        column.name = requiredText("name");
        for (const GridColumn &other : std::as_const(m_template.columns))
            if (other.name == column.name)
                fail(QStringLiteral("a second column \"%1\"").arg(column.name));
        if (!has("width"))
            fail(QStringLiteral("width is missing"));
        column.width = number("width", 0.1, 1000, 1);
        column.alignment = alignment(Qt::AlignLeft);
        column.maxLines = linesOfText();
        m_template.columns.append(column);
        readEmpty();
    };
    readChildren({{"column", "name width align wrap", column, true}});
}

void TemplateReader::readGroup()
{
    if (m_template.groups.size() == maxGroups)
        fail(QStringLiteral("more than %1 groups").arg(maxGroups));
    Group group;
    group.line = m_line;
    group.field = fieldReference("by");
    group.period = Group::Period(
        choice("per", {{"day", Group::Day}, {"month", Group::Month}, {"year", Group::Year}}, Group::EachValue));
    group.sortField = has("sort") ? fieldReference("sort") : -1;
    group.keep = int(number("keep", 1, 100, 1));
    group.repeatsHeader = yesNo("repeat");
    group.startsPage = yesNo("newpage");
    const int level = int(m_template.groups.size());
    m_template.groups.append(group);
    readChildren({
        {"header", "when", [&] { readBand(m_template.groups.last().header, level, true); }},
        {"footer", "when", [&] { readBand(m_template.groups.last().footer, level, true); }},
    });
}

void TemplateReader::readDetail()
{
    Labels &labels = m_template.labels;
    labels.across = int(number("across", 1, 20, 0));
    labels.height = length("height", 10, 4000, 0);
    labels.gap = length("gap", 0, 144, 0);
    if (labels.across == 0 && (has("height") || has("gap")))
        fail(QStringLiteral("height and gap are those of labels: across is missing"));
    // A row that is not printed would leave a label blank.
    if (labels.across > 0 && has("when"))
        fail(QStringLiteral("labels have no when: name their rows in <where>"));
    if (has("shade")) {
        static const QRegularExpression form(QStringLiteral("^#[0-9a-fA-F]{6}$"));
        if (!form.match(text("shade")).hasMatch())
            fail(QStringLiteral("shade=\"%1\" is not \"#rrggbb\"").arg(text("shade")));
        m_template.shade = QColor(text("shade"));
    }
    readBand(m_template.detail, -1);
}

void TemplateReader::readBand(Band &band, int level, bool mayHaveCharts)
{
    band.when = formula(text("when"));
    QList<Element> elements{
        {"line", "size bold when", [&] { readLine(band, level); }, true},
        {"rule", "", [&] { readRule(band); }, true},
    };
    if (mayHaveCharts)
        elements.append({"chart", "value most order size when", [&] { readChart(band, level); }, true});
    readChildren(elements);
}

void TemplateReader::requireRoom(const Band &band) const
{
    if (band.lines.size() == maxLines)
        fail(QStringLiteral("more than %1 lines").arg(maxLines));
}

void TemplateReader::readLine(Band &band, int level)
{
    requireRoom(band);
    BandLine line;
    line.size = number("size", 5, 24, m_template.size);
    line.when = formula(text("when"));
    const bool bold = yesNo("bold");
    const auto cell = [&] {
        if (line.cells.size() == maxCells)
            fail(QStringLiteral("more than %1 cells").arg(maxCells));
        line.cells.append(Cell());
        line.cells.last().bold = bold;
        readCell(line.cells.last(), level);
    };
    readChildren({{"cell", "in from to align bold when barcode", cell, true}});
    band.lines.append(line);
}

void TemplateReader::readChart(Band &band, int level)
{
    requireRoom(band);
    Chart chart;
    chart.level = level + 1;
    chart.line = m_line;
    chart.most = int(number("most", 2, 100, chart.most));
    chart.largestFirst = choice("order", {{"groups", false}, {"largest", true}}, false);
    const QList<TextPiece> value = CellTextParser(m_template, chart.level, m_line).parse(requiredText("value"));
    if (value.size() != 1 || value.first().kind != TextPiece::AggregateValue)
        fail(QStringLiteral("value=\"%1\" is no {count()} or {sum(Table.Column)}").arg(text("value")));
    chart.value = value.first();
    BandLine line;
    line.chart = int(m_template.charts.size());
    line.size = number("size", 5, 24, m_template.size);
    line.when = formula(text("when"));
    m_template.charts.append(chart);
    const auto label = [&] {
        if (line.cells.size() == maxCells)
            fail(QStringLiteral("more than %1 labels").arg(maxCells));
        line.cells.append(Cell());
        line.cells.last().when = formula(text("when"));
        readCellText(line.cells.last(), chart.level);
    };
    readChildren({{"label", "when", label, true}});
    if (line.cells.isEmpty())
        fail(QStringLiteral("<label> is missing"));
    band.lines.append(line);
}

void TemplateReader::readRule(Band &band)
{
    requireRoom(band);
    BandLine rule;
    rule.isRule = true;
    band.lines.append(rule);
    readEmpty();
}

void TemplateReader::readCell(Cell &cell, int level)
{
    if (has("in") == (has("from") || has("to")))
        fail(QStringLiteral("a cell stands either in=\"...\" or from=\"...\" to=\"...\""));
    cell.firstColumn = gridColumn(has("in") ? text("in") : text("from"));
    cell.lastColumn = has("in") ? cell.firstColumn : gridColumn(text("to"));
    if (cell.lastColumn < cell.firstColumn)
        fail(QStringLiteral("column \"%1\" comes before \"%2\"").arg(text("to"), text("from")));
    const GridColumn &column = m_template.columns.at(cell.firstColumn);
    cell.alignment = alignment(column.alignment);
    cell.bold = has("bold") ? yesNo("bold") : cell.bold;
    cell.isBarcode = choice("barcode", {{"code128", true}}, false);
    cell.maxLines = cell.isBarcode ? 1 : column.maxLines;
    cell.when = formula(text("when"));
    readCellText(cell, level);
}

void TemplateReader::readCellText(Cell &cell, int level)
{
    cell.line = m_line;
    static const QRegularExpression lineBreak(QStringLiteral("\\s*\\n\\s*"));
    const int line = m_line;
    const QString content = readText().replace(lineBreak, QStringLiteral(" "));
    m_line = line;
    if (content.size() > maxCellText)
        fail(QStringLiteral("the cell's text is longer than %1 characters").arg(maxCellText));
    cell.text = CellTextParser(m_template, level, line).parse(content);
}

void TemplateReader::readChildren(const QList<Element> &elements)
{
    QList<const Element *> seen;
    for (;;) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartDocument:
            m_line = int(m_xml.lineNumber());
            if (m_xml.documentEncoding().compare(QStringLiteral("UTF-8"), Qt::CaseInsensitive) != 0
                && !m_xml.documentEncoding().isEmpty())
                fail(QStringLiteral("the template's encoding is not UTF-8"));
            continue;
        case QXmlStreamReader::Comment:
            continue;
        case QXmlStreamReader::Characters:
            if (!m_xml.isWhitespace())
                fail(QStringLiteral("text where none belongs"));
            continue;
        case QXmlStreamReader::StartElement:
            break;
        case QXmlStreamReader::EndElement:
        case QXmlStreamReader::EndDocument:
            return;
        case QXmlStreamReader::Invalid:
            m_line = int(m_xml.lineNumber());
            fail(m_xml.errorString());
        default:
            m_line = int(m_xml.lineNumber());
            fail(QStringLiteral("document types and processing instructions are refused"));
        }
        m_line = int(m_xml.lineNumber());
        m_attributes = m_xml.attributes();
        const QStringView name = m_xml.qualifiedName();
        const auto element = std::find_if(elements.begin(), elements.end(),
                                          [&](const Element &known) { return name == QLatin1StringView(known.name); });
        if (element == elements.end())
            fail(QStringLiteral("unknown element <%1>").arg(name));
        if (seen.contains(&*element) && !element->mayRepeat)
            fail(QStringLiteral("a second <%1>").arg(name));
        seen.append(&*element);
        const QStringList allowed = QString::fromLatin1(element->attributes).split(' ');
        for (const QXmlStreamAttribute &attribute : std::as_const(m_attributes))
            if (!allowed.contains(attribute.qualifiedName()))
                fail(QStringLiteral("unknown attribute %1 of <%2>").arg(attribute.qualifiedName(), name));
        element->read();
    }
}

QString TemplateReader::readText()
{
    const QString content = m_xml.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
    if (m_xml.hasError()) {
        m_line = int(m_xml.lineNumber());
        fail(m_xml.errorString());
    }
    return content;
}

bool TemplateReader::has(const char *attribute) const
{
    return m_attributes.hasAttribute(QLatin1StringView(attribute));
}

QString TemplateReader::text(const char *attribute) const
{
    return m_attributes.value(QLatin1StringView(attribute)).toString();
}

QString TemplateReader::requiredText(const char *attribute) const
{
    const QString value = text(attribute).trimmed();
    if (value.isEmpty())
        fail(QStringLiteral("%1 is missing").arg(QLatin1StringView(attribute)));
    return value;
}

bool TemplateReader::yesNo(const char *attribute) const
{
    return choice(attribute, {{"yes", true}, {"no", false}}, false);
}

double TemplateReader::number(const char *attribute, double lowest, double highest, double otherwise) const
{
    if (!has(attribute))
        return otherwise;
    bool valid = false;
    const double value = text(attribute).toDouble(&valid);
    if (!valid || !(value >= lowest && value <= highest))
        fail(QStringLiteral("%1=\"%2\" is no number from %3 to %4")
                 .arg(QLatin1StringView(attribute), text(attribute))
                 .arg(lowest)
                 .arg(highest));
    return value;
}

double TemplateReader::length(const char *attribute, double lowest, double highest, double otherwise) const
{
    if (!has(attribute))
        return otherwise;
    QString value = text(attribute).trimmed();
    double points = 1;
    for (const auto &[unit, pointsOfUnit] : {std::pair("mm", 72 / 25.4), {"in", 72.0}})
        if (value.endsWith(QLatin1StringView(unit))) {
            value.chop(2);
            points = pointsOfUnit;
        }
    bool valid = false;
    points *= value.toDouble(&valid);
    if (!valid || !(points >= lowest && points <= highest))
        fail(QStringLiteral("%1=\"%2\" is no length from %3 to %4 points")
                 .arg(QLatin1StringView(attribute), text(attribute))
                 .arg(lowest)
                 .arg(highest));
    return points;
}

int TemplateReader::linesOfText() const
{
    static const QRegularExpression number(QStringLiteral("^[2-9]$"));
    if (number.match(text("wrap")).hasMatch())
        return text("wrap").toInt();
    return yesNo("wrap") ? std::numeric_limits<int>::max() : 1;
}

int TemplateReader::choice(const char *attribute, std::initializer_list<Word> words, int otherwise) const
{
    if (!has(attribute))
        return otherwise;
    for (const Word &word : words)
        if (text(attribute) == QLatin1StringView(word.word))
            return word.meaning;
    fail(QStringLiteral("unknown %1 \"%2\"").arg(QLatin1StringView(attribute), text(attribute)));
}

Qt::Alignment TemplateReader::alignment(Qt::Alignment otherwise) const
{
    return Qt::Alignment(choice("align",
                                {{"left", Qt::AlignLeft}, {"center", Qt::AlignHCenter}, {"right", Qt::AlignRight}},
                                otherwise.toInt()));
}

int TemplateReader::fieldReference(const char *attribute)
{
    const QString reference = requiredText(attribute);
    if (!reference.startsWith('{') || !reference.endsWith('}'))
        fail(QStringLiteral("%1=\"%2\" is not \"{Table.Column}\"").arg(QLatin1StringView(attribute), reference));
    return m_template.fieldCalled(QStringView(reference).sliced(1).chopped(1), m_line);
}

Formula TemplateReader::formula(const QString &text)
{
    try {
        return Formula::parse(text, m_template.fields, m_line);
    } catch (const ReportError &error) {
        fail(error.detail());
    }
}

int TemplateReader::gridColumn(const QString &name) const
{
    for (int i = 0; i < m_template.columns.size(); ++i)
        if (m_template.columns.at(i).name == name)
            return i;
    fail(QStringLiteral("unknown column \"%1\"").arg(name));
}

void TemplateReader::checkComplete() const
{
    if (m_template.table.isEmpty() && (m_template.fields.count() > 0 || !m_template.joins.isEmpty()))
        fail(QStringLiteral("<from> is missing"));
    if (m_template.columns.isEmpty())
        fail(QStringLiteral("<column> is missing"));
    if (m_template.detail.lines.isEmpty() && m_template.groups.isEmpty())
        fail(QStringLiteral("<detail> is missing or has no line"));
    if (!m_template.table.isEmpty() && m_template.fields.count() == 0)
        fail(QStringLiteral("the template mentions no field"));
    if (m_template.detailWidth() < narrowestDetail)
        fail(QStringLiteral("margins and gaps leave no width"));
    checkCharts();
}

void TemplateReader::checkCharts() const
{
    for (const Chart &chart : m_template.charts)
        if (chart.level >= m_template.groups.size())
            throw templateError(m_template.fileName, chart.line,
                                QStringLiteral("there is no group below the chart's own"));
}

void TemplateReader::fail(const QString &what) const { fail(ResultCode::cannotLoadReport, what); }

void TemplateReader::fail(int code, const QString &what) const
{
    throw templateError(m_template.fileName, m_line, what, code);
}
