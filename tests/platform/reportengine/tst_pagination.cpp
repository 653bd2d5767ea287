#include "platform/reportengine/Pagination.h"
#include "tests/platform/reportengine/ReportCrib.h"

#include <QRandomGenerator>

namespace {

struct TestValue : Value {
    using Value::Value;
    TestValue() = default;
    TestValue(const char *text) : Value(QString::fromUtf8(text)) { }
};
using Row = std::vector<TestValue>;

/// The layout of a template over table T with the text columns A, B, C and the numeric column N.
struct LaidOut {
    LaidOut(const QByteArray &content, const std::vector<Row> &rows, const QHash<QString, QString> &parameters = {})
        : report(TemplateReader::read(content, "Test.rpt"))
    {
        // Columns in the order in which the template mentions them, as the records have them.
        std::vector<Value> values;
        for (int number = 0; number < report.fields.count(); ++number)
            if (report.fields.at(number).column == "N")
                report.fields.at(number).kind = FieldKind::Number;
        for (const Row &row : rows)
            for (const Field &field : report.fields)
                values.push_back(row[QStringLiteral("NABC").indexOf(field.column)]);
        records = GroupedRecords(report, std::move(values));
        composer = std::make_unique<BandComposer>(report, records, parameters, QDateTime({2024, 5, 6}, {7, 8, 9}));
        layout = std::make_unique<Pagination>(report, records, *composer);
    }

    void complete() { QVERIFY(layout->advance(QDeadlineTimer::Forever)); }

    QStringList texts(int page) const
    {
        QStringList texts;
        for (const PageElement &element : layout->elements(page))
            if (element.kind == PageElement::Text)
                texts.append(element.text);
        return texts;
    }

    double bodyTop() const { return composer->margin() + bandHeight(report.pageHeader); }
    double bodyBottom() const
    {
        return composer->pageSize().height() - composer->margin() - bandHeight(report.pageFooter);
    }
    double bandHeight(const Band &band, int row = -1, bool continued = false) const
    {
        return composer->height(band, {row, continued, -1, -1, row < 0});
    }

    Template report;
    GroupedRecords records;
    std::unique_ptr<BandComposer> composer;
    std::unique_ptr<Pagination> layout;
};

QByteArray page(const QByteArray &bands, const QByteArray &attributes = {})
{
    return "<report version=\"1\" paper=\"A5\" orientation=\"landscape\" size=\"10\"" + attributes
        + "><data><from table=\"T\"/></data><columns><column name=\"a\" width=\"5\" wrap=\"yes\"/><column name=\"b\" "
          "width=\"1\" align=\"right\"/></columns>"
        + bands + "</report>";
}

QByteArray lines(const QByteArray &text, int count = 1, const QByteArray &attributes = {})
{
    return ("<line" + attributes + "><cell in=\"a\">" + text + "</cell></line>").repeated(count);
}

}

class TestPagination : public QObject
{
    Q_OBJECT

private slots:
    void breaksPagesWell_data()
    {
        for (int seed = 0; seed < 60; ++seed)
            row(qPrintable(QString("seed %1").arg(seed)), seed);
    }

    void breaksPagesWell()
    {
        const auto [seed] = fetched<int>();
        QRandomGenerator random(seed);
        const int levels = random.bounded(4);
        QByteArray bands;
        if (random.bounded(2))
            bands += "<reportheader>" + lines("title", 1 + random.bounded(3)) + "</reportheader>";
        bands += "<pageheader>" + lines("{?title}") + "<rule/></pageheader><pagefooter>"
            + lines("Page {#page} of {#pages} to {T.N}") + "</pagefooter>";
        for (int level = 0; level < levels; ++level) {
            bands += QByteArray("<group by=\"{T.") + char('A' + level) + "}\" keep=\""
                + QByteArray::number(1 + random.bounded(3)) + "\" repeat=\"" + (random.bounded(2) ? "yes" : "no")
                + "\" newpage=\"" + (random.bounded(8) == 0 ? "yes" : "no") + "\"><header>"
                + lines("head {#continued}", random.bounded(3)) + "</header><footer>" + lines("foot", random.bounded(3))
                + "</footer></group>";
        }
        bands += "<detail shade=\"#eeeeee\">" + lines("{T.B}{T.C}") + lines("{T.N}", random.bounded(2)) + "</detail>";
        bands += "<reportfooter>" + lines("{count()}", random.bounded(3)) + "</reportfooter>";

        const int count = 1 + random.bounded(150);
        const int spread = 1 + random.bounded(12);
        std::vector<Row> rows;
        for (int row = 0; row < count; ++row) {
            const auto group = [&](int size) {
                return QStringLiteral("%1").arg(random.bounded(size), 3, 10, QChar('0'));
            };
            // The height of a row hangs on its text.
            const QString lineEnds(random.bounded(4) == 0 ? random.bounded(spread) : 0, '\n');
            rows.push_back({row, group(3), group(4) + lineEnds, group(3)});
        }
        LaidOut laidOut(page(bands, " margin=\"100\""), rows);
        laidOut.complete();
        const Pagination &layout = *laidOut.layout;
        const GroupedRecords &records = laidOut.records;
        const QList<Group> &groups = laidOut.report.groups;

        std::vector<int> headerPageOf(count, INT_MAX), firstPageOf(count, -1), lastPageOf(count, -1),
            stripsOf(count, 0);
        int nextRow = 0;
        for (int number = 0; number < layout.pageCount(); ++number) {
            double y = laidOut.bodyTop();
            bool hasContent = false;
            for (const PlacedBand &placed : layout.page(number).bands) {
                QCOMPARE(placed.top, y);
                y += placed.height;
                QVERIFY(y <= laidOut.bodyBottom() + 0.001);
                hasContent = hasContent || !placed.continued;
                for (int level = 0; level < levels; ++level) {
                    if (placed.band == &groups[level].footer) {
                        QCOMPARE(records.run(level, placed.row).last, placed.row);
                        QCOMPARE(placed.row, nextRow - 1);
                        QCOMPARE(number, lastPageOf[placed.row]); // never alone
                    }
                    if (placed.band != &groups[level].header)
                        continue;
                    QVERIFY(!placed.continued || groups[level].repeatsHeader);
                    if (placed.continued)
                        continue;
                    QCOMPARE(records.run(level, placed.row).first, placed.row);
                    QCOMPARE(placed.row, nextRow); // its rows follow
                    headerPageOf[placed.row] = std::min(headerPageOf[placed.row], number);
                    QVERIFY(!groups[level].startsPage || nextRow == 0 || number > lastPageOf[nextRow - 1]);
                }
                if (placed.band == &laidOut.report.reportFooter)
                    QCOMPARE(number, lastPageOf[count - 1]);
                if (placed.band != &laidOut.report.detail)
                    continue;
                if (placed.firstStrip == 0) {
                    QCOMPARE(placed.row, nextRow++);
                    firstPageOf[placed.row] = number;
                    QVERIFY(headerPageOf[placed.row] >= number); // none stands alone
                }
                QCOMPARE(placed.firstStrip, stripsOf[placed.row]);
                stripsOf[placed.row] += placed.stripCount;
                lastPageOf[placed.row] = number;
            }
            QVERIFY(hasContent);
            const int last = layout.page(number).lastRow; // or one that had no room here
            QVERIFY(last == nextRow - 1 || last == nextRow);
            const Value &lastNumber = records.record(last)[laidOut.report.fields.find("T", "N")];
            QCOMPARE(laidOut.texts(number).last(),
                     QString("Page %1 of %2 to %3").arg(number + 1).arg(layout.pageCount()).arg(lastNumber.toText()));
        }
        QCOMPARE(nextRow, count);

        const double room = laidOut.bodyBottom() - laidOut.bodyTop();
        for (int row = 0; row < count; ++row) {
            QCOMPARE(stripsOf[row], int(laidOut.composer->stripHeights(laidOut.report.detail, {row}).size()));
            // What is above a row at the least, when it begins a page.
            double above = 0;
            for (int level = 0; level < levels; ++level) {
                const bool opens = level >= records.firstOpening(row);
                if (opens || groups[level].repeatsHeader)
                    above += laidOut.bandHeight(groups[level].header, row, !opens);
            }
            // What should stay together: the first rows of each group that opens here, and the row itself.
            for (int level = records.firstOpening(row); level <= levels; ++level) {
                const bool isRow = level == levels;
                const int end = isRow ? row : std::min(row + groups[level].keep - 1, records.run(level, row).last);
                double kept = above + (end == count - 1 ? laidOut.bandHeight(laidOut.report.reportFooter, end) : 0);
                for (int r = row; r <= end; ++r) {
                    kept += laidOut.bandHeight(laidOut.report.detail, r);
                    for (int inner = 0; inner < levels; ++inner) {
                        if (r > row && inner >= records.firstOpening(r))
                            kept += laidOut.bandHeight(groups[inner].header, r);
                        if (inner >= records.firstClosing(r))
                            kept += laidOut.bandHeight(groups[inner].footer, r);
                    }
                }
                // Rows within may ask for further ones; half a page leaves room for those.
                if (kept < (isRow ? room : room / 2))
                    QCOMPARE(lastPageOf[end], firstPageOf[row]);
            }
        }
    }

    void textsOfAPage()
    {
        const QByteArray bands = "<pageheader>" + lines("{#rows} on {#today} at {#now}")
            + "</pageheader><group by=\"{T.A}\"><header>"
            + lines("{T.A:upper}: {count(T.B)} of {count()}, {sum(T.N):currency}")
            + "</header></group><group by=\"{T.C}\"><footer>" + lines("{T.C}: {avg(T.N)} {min(T.N)} {max(T.B)}")
            + "</footer></group><detail shade=\"#eeeeee\"><line><cell in=\"a\">{T.B}</cell>"
              "<cell in=\"b\">{T.N:number 2}</cell></line></detail><reportfooter>"
            + lines("{sum(T.N)} {avg(T.N):number 1} {min(T.B)} {max(T.B)} {?title} {{x}") + "</reportfooter>";
        LaidOut laidOut(page(bands),
                        {{1.5, "a", "drill", "c"},
                         {-2, "a", TestValue(), "c"},
                         {10, "a", "Tap", "d"},
                         {TestValue(), "a", "saw", "d"},
                         {3, "b", "\u00c4xte", "d"}},
                        {{"title", "Title"}});
        laidOut.complete();
        QCOMPARE(laidOut.texts(0),
                 QStringList({"5 on 2024-05-06 at 2024-05-06 07:08:09", "A: 3 of 4, $9.50", "drill", "1.50", "-2.00",
                              "c: -0.25 -2 drill", "Tap", "10.00", "saw", "d: 10 10 Tap", "B: 1 of 1, $3.00",
                              "\u00c4xte", "3.00", "d: 3 3 \u00c4xte", "12.5 3.1 \u00c4xte Tap Title {x}"}));
        QList<double> shaded, secondRows; // shading begins anew with each group
        for (const PageElement &element : laidOut.layout->elements(0))
            if (element.kind == PageElement::Shade)
                shaded.append(element.rect.top());
        for (const PlacedBand &placed : laidOut.layout->page(0).bands)
            if (placed.band == &laidOut.report.detail && (placed.row == 1 || placed.row == 3))
                secondRows.append(placed.top);
        QCOMPARE(shaded, secondRows);
    }

    void wrapsAndElides()
    {
        const QString text = QStringList(60, "calibration").join(' ');
        LaidOut laidOut(
            page("<detail><line><cell in=\"a\">{T.A}</cell><cell in=\"b\">{T.A}</cell></line><line><cell in=\"a\" "
                 "barcode=\"code128\">{T.B}</cell><cell in=\"b\" barcode=\"code128\">{T.B}</cell></line></detail>"),
            {{1, text, "12345678901234567890123456", ""}, {2, "one\ntwo\r\nthree\tfour", "\u00e4", ""}});
        laidOut.complete();
        QStringList wrapped, elided, tooWide;
        int codes = 0;
        for (const PageElement &element : laidOut.layout->elements(0)) {
            codes += element.kind == PageElement::BarCode;
            if (element.kind != PageElement::Text)
                continue;
            if (laidOut.composer->measure().width(element.text, element.size, element.bold)
                > element.rect.width() + 0.01)
                tooWide.append(element.text);
            (element.alignment & Qt::AlignRight ? elided : wrapped).append(element.text);
        }
        QCOMPARE(tooWide, QStringList());
        QVERIFY(wrapped.size() > 6);
        QCOMPARE(wrapped.mid(wrapped.size() - 4), QStringList({"one", "two", "three four", "\u00e4"}));
        QCOMPARE(wrapped.mid(0, wrapped.size() - 4).join(' '), text);
        QVERIFY(elided[0].startsWith("calibration") && elided[0].endsWith(QChar(0x2026)));
        QCOMPARE(codes, 1); // too narrow, and not to be encoded: printed as text
    }

    void wrappedLinesNeedNoEllipsis()
    {
        TextMeasure measure("Liberation Sans");
        const QString text = "Two AVAVAVAV Wrenches, To 200 A to 250 A, L Y T V A";
        for (int width = 300; width < 4000; ++width)
            for (const QString &line : measure.wrapped(text, width, 9, false))
                QCOMPARE(measure.elided(line, width, 9, false), line);
    }

    void headingsOfMoreThanHalfAPageAreNotRepeated()
    {
        const QByteArray header =
            "<group by=\"{T.A}\" repeat=\"yes\"><header>" + lines("head", 18) + "</header></group>";
        LaidOut laidOut(page(header + "<detail>" + lines("{T.N}") + "</detail>"),
                        std::vector<Row>(40, Row{1, "a", "", ""}));
        laidOut.complete();
        QVERIFY(!laidOut.texts(1).contains("head"));
    }

    void labelsGoAcrossThenDown()
    {
        // On a page of 20 tenths of an inch, without margins, labels of 4; a line takes about 1.
        const QByteArray content =
            "<report version=\"1\" width=\"3.2in\" height=\"2in\" margin=\"0\" size=\"6\"><data><from table=\"T\"/>"
            "</data><columns><column name=\"a\" width=\"1\" wrap=\"2\"/></columns><pageheader>"
            + lines("Page {#page}") + "</pageheader><group by=\"{T.A}\" keep=\"4\" repeat=\"yes\"><header>"
            + lines("head{#continued}") + "</header><footer>" + lines("foot")
            + "</footer></group><detail across=\"3\" "
              "height=\"0.4in\" gap=\"0.1in\">"
            + lines("{T.B}") + lines("{T.N}") + lines("c", 5) + "</detail></report>";
        std::vector<Row> rows;
        for (int row = 1; row <= 19; ++row)
            rows.push_back({row, row < 6 ? "a" : row < 7 ? "b" : "c", QString(row % 2 * 50, 'W'), ""});
        LaidOut laidOut(content, rows);
        laidOut.complete();
        QString pages;
        for (int number = 0; number < laidOut.layout->pageCount(); ++number) {
            double y = laidOut.bodyTop();
            for (const PlacedBand &placed : laidOut.layout->page(number).bands) {
                if (placed.label < 0) {
                    pages += placed.band == &laidOut.report.groups[0].header ? " head" : " foot";
                    QCOMPARE(placed.top, y);
                } else {
                    pages += QStringLiteral("%1%2").arg(placed.label ? "," : " ").arg(placed.row + 1);
                    QCOMPARE(placed.top, placed.label ? y - placed.height : y);
                    QCOMPARE(placed.height, 0.4 * 1440);
                    // Each line of a text that wraps, and as many of the others as have room
                    QCOMPARE(placed.stripCount, int(placed.height / laidOut.composer->measure().lineHeight(6)));
                }
                y = placed.top + placed.height;
            }
            QVERIFY(y <= laidOut.composer->pageSize().height());
            pages += '\n';
        }
        QCOMPARE(pages, " head 1,2,3 4,5 foot head 6 foot\n head 7,8,9 10,11,12 13,14,15 16,17,18\n head 19 foot\n");
        for (const PageElement &element : laidOut.layout->elements(1)) {
            const double place = element.rect.left() / (1.1 * 1440);
            QVERIFY(element.rect.width() > 1.5 * 1440 || element.rect.right() - int(place) * 1.1 * 1440 <= 1440);
            QVERIFY(!element.text.startsWith('W') || element.cellText.isEmpty() || element.cellText.size() == 50);
        }
        QCOMPARE(laidOut.texts(1).count("Page 2"), 1);
    }

    void chartShowsTheLargestAndTheOthers_data()
    {
        row("in the groups' order", QByteArray("most=\"4\""), "a 10, Long -5, d 20, 3 others 3.");
        row("the largest first", QByteArray("most=\"4\" order=\"largest\""), "d 20, a 10, Long -5, 3 others 3.");
        row("on two pages", QByteArray("size=\"24\" most=\"20\""),
            "a 10, Long -5, c 1, d 20, e 2, f 0, g 0, h 0, i 0, j 0, k 0. l 0, m 0.");
    }

    void chartShowsTheLargestAndTheOthers()
    {
        const auto [attributes, bars] = fetched<QByteArray, QString>();
        const QString label = QString("Long label ").repeated(30);
        std::vector<Row> rows{{10, "a", "", ""}, {-2, "b", label, ""}, {-3, "b", label, ""},      {1, "c", "", ""},
                              {20, "d", "", ""}, {2, "e", "", ""},     {TestValue(), "f", "", ""}};
        for (QChar name = 'g'; attributes.contains("20") && name <= 'm'; name = QChar(name.unicode() + 1))
            rows.push_back({0, QString(name), "", ""});
        LaidOut laidOut(page("<reportheader><chart value=\"{sum(T.N):number 0}\" " + attributes
                             + "><label when=\"{T.A} = 'b'\">{T.B}</label><label>{T.A}</label></chart></reportheader>"
                               "<group by=\"{T.A}\"/>"),
                        rows);
        laidOut.complete();
        QString shown;
        std::map<double, double> ends; // of bars beside the axis, by their numbers
        for (int number = 0; number < laidOut.layout->pageCount(); ++number) {
            const QList<PageElement> elements = laidOut.layout->elements(number);
            for (int i = 0; i < elements.size(); i += 4) {
                const double value = elements[i + 2].text.toDouble();
                shown += elements[i].text.section(' ', 0, elements[i].text.endsWith("others") ? 1 : 0)
                    + QStringLiteral(" %1, ").arg(value);
                if (i + 3 == elements.size())
                    break; // the others have a number only
                const QRectF bar = elements[i + 3].rect;
                QVERIFY(elements[i].rect.right() < bar.left() && bar.right() < elements[i + 2].rect.left());
                ends[value] = (value < 0 ? bar.left() : bar.right()) - elements[i + 1].rect.center().x();
            }
            shown.replace(shown.size() - 2, 2, ". ");
        }
        QCOMPARE(shown.trimmed(), bars);
        for (const auto &[value, end] : ends)
            QCOMPARE(qRound(end), qRound(ends[20] * value / 20));
    }

    void tooManyPages()
    {
        std::vector<Row> rows;
        for (int row = 0; row <= Pagination::maxPages; ++row)
            rows.push_back({row, QString::number(row), "", ""});
        LaidOut laidOut(page("<group by=\"{T.A}\" newpage=\"yes\"/><detail>" + lines("{T.N}") + "</detail>"), rows);
        QCOMPARE(codeOf([&] { laidOut.layout->advance(QDeadlineTimer::Forever); }), int(ResultCode::outOfMemory));
    }
};

QTEST_MAIN(TestPagination)
#include "tst_pagination.moc"
