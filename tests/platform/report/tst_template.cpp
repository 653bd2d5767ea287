#include "tests/platform/report/ReportCrib.h"
#include "tests/support/DataRows.h"
#include "tests/support/Files.h"

namespace {

const QByteArray head = "<report version=\"1\">\n";
const QByteArray data = "<data><from table=\"Tools\"/></data>\n";
const QByteArray twoColumns =
    "<columns><column name=\"a\" width=\"1\"/><column name=\"b\" width=\"2\" wrap=\"yes\"/></columns>\n";
const QByteArray detail = "<detail><line><cell in=\"a\">{Tools.ID}</cell></line></detail>\n";
const QByteArray tail = "</report>\n";

/// A template whose fourth line is `part`.
QByteArray with(const QByteArray &part) { return head + data + twoColumns + part + '\n' + detail + tail; }

QByteArray withCell(const QByteArray &text)
{
    return with("<nodata><line><cell in=\"a\">" + text + "</cell></line></nodata>");
}

ReportError errorOf(const QByteArray &content)
{
    try {
        TemplateReader::read(content, "Test.rpt");
    } catch (const ReportError &error) {
        return error;
    }
    return {ResultCode::ok, {}};
}

}

class TestTemplate : public QObject
{
    Q_OBJECT

private slots:
    void readsWhatATemplateStates()
    {
        const Template report = TemplateReader::read(
            "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!-- by hand -->\n"
            R"(<report version="1" title="R" paper="A5" orientation="landscape" margin="40.5" font="Serif" size="12">
              <data><from table="Tools"/>
                <join table="Types" kind="inner" on="Tools.Type = Types.ID and Tools.Out = Types.Parent"/>
                <join table="Locations" on="Tools.Location=Locations.ID"/><where>{Tools.Out} = false</where>
                <sort by="{Tools.ID}" order="descending"/><sort by="{tools.description}"/></data>
              <columns><column name="a" width="1"/><column name="b" width="2" align="right" wrap="yes"/></columns>
              <group by="{Types.Description}"/>
              <group by="{Tools.ID}" sort="{Tools.Description}" per="month" keep="3" repeat="yes" newpage="yes">
                <footer when="{Tools.ID} > 1"><rule/><line bold="yes" size="8"><cell from="a" to="b">x</cell>
                  <cell in="b" bold="no" align="center">y</cell></line></footer></group>
              <detail shade="#EEf2f6"><line><cell in="b" barcode="code128">{TOOLS.id}</cell></line></detail>
            </report>)",
            "R.rpt");
        QCOMPARE(report.paper.id(), QPageSize::A5);
        QVERIFY(report.landscape);
        QCOMPARE(report.margin, 40.5);
        QCOMPARE(report.font, "Serif");
        QCOMPARE(report.joins.size(), 2);
        QVERIFY(!report.joins[0].keepsUnmatched);
        QCOMPARE(report.joins[0].equalFields.size(), 2);
        QVERIFY(report.joins[1].keepsUnmatched);
        QVERIFY(!report.where.isEmpty());
        QVERIFY(report.sorting[0].descending && !report.sorting[1].descending);
        QCOMPARE(report.groups.size(), 2);
        QCOMPARE(report.groups[0].sortField, -1);
        const Group &group = report.groups[1];
        QCOMPARE(report.fields.at(group.field).name(), "Tools.ID");
        QCOMPARE(report.fields.at(group.sortField).name(), "tools.description");
        QCOMPARE(group.period, Group::Month);
        QCOMPARE(group.keep, 3);
        QVERIFY(group.repeatsHeader && group.startsPage);
        QVERIFY(group.header.lines.isEmpty());
        QCOMPARE(group.footer.lines.size(), 2);
        QVERIFY(group.footer.lines[0].isRule);
        const BandLine &line = group.footer.lines[1];
        QCOMPARE(line.size, 8.0);
        QVERIFY(line.cells[0].bold && !line.cells[0].wraps && line.cells[0].lastColumn == 1);
        QVERIFY(!line.cells[1].bold && line.cells[1].wraps);
        QCOMPARE(line.cells[1].alignment, Qt::AlignHCenter);
        QCOMPARE(report.detail.lines[0].size, 12.0);
        QVERIFY(report.detail.lines[0].cells[0].isBarcode && !report.detail.lines[0].cells[0].wraps);
        QCOMPARE(report.detail.lines[0].cells[0].alignment, Qt::AlignRight);
        QCOMPARE(report.shade, QColor(0xee, 0xf2, 0xf6));
        QCOMPARE(report.fields.count(), 9);
    }

    void readsTextPieces()
    {
        const Template report =
            TemplateReader::read(withCell("{{{Tools.PricePer: Currency }}\n   and  "
                                          "{count()}/{count()}{Sum(tools.priceper):number 2}{#page}{?title} }{{"),
                                 "T.rpt");
        const QList<TextPiece> pieces = report.noData.lines[0].cells[0].text;
        QStringList kinds;
        for (const TextPiece &piece : pieces)
            kinds.append(piece.kind == TextPiece::Literal ? piece.text : QString::number(piece.kind));
        QCOMPARE(kinds,
                 (QStringList{"{", QString::number(TextPiece::FieldValue), "} and  ",
                              QString::number(TextPiece::AggregateValue), "/",
                              QString::number(TextPiece::AggregateValue), QString::number(TextPiece::AggregateValue),
                              QString::number(TextPiece::PageNumber), QString::number(TextPiece::Parameter), " }{"}));
        QCOMPARE(pieces[1].format.kind, FieldFormat::Currency);
        QCOMPARE(pieces[3].number, pieces[5].number);
        QCOMPARE(report.aggregates.size(), 2);
        QCOMPARE(report.aggregates[1].field, pieces[1].number);
        QCOMPARE(report.parameters.keys(), QStringList("title"));
    }

    void refusesWithTheLine_data()
    {
        columns<QByteArray, int, QString, int>("content", "line", "words", "code");
        const auto row = [](const char *name, const QByteArray &content, int line, const QString &words,
                            int code = ResultCode::cannotLoadReport) { ::row(name, content, line, words, code); };
        // The file as a whole
        row("empty", "", 1, "end of document");
        row("binary", QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1\0\0\0\0", 12), 1, "UTF-8");
        row("no UTF-8", with("<nodata><line><cell in=\"a\">\xC4</cell></line></nodata>"), 1, "UTF-8");
        row("another encoding", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + with(""), 1, "encoding");
        row("HTML", "<html/>", 1, "<html>");
        row("another version", "<report version=\"2\"/>", 1, "version 1");
        row("without version", "<report/>", 1, "version 1");
        row("document type", "<!DOCTYPE report [<!ENTITY a \"b\">]>\n" + with(""), 1, "document type");
        row("processing instruction", with("<?php x?>"), 4, "processing instructions");
        row("not closed", head + data + twoColumns + detail, 5, "end of document");
        row("a second report", with("") + with(""), 7, "extra content");
        row("too large", with("<!--" + QByteArray(TemplateReader::maxBytes, ' ') + "-->"), 1, "larger");
        row("undefined entity", withCell("&nbsp;"), 4, "nbsp");
        // Elements and attributes
        row("unknown element", with("<script/>"), 4, "<script>");
        row("element of another place", with("<line/>"), 4, "<line>");
        row("element in another case", with("<Group by=\"{Tools.ID}\"/>"), 4, "<Group>");
        row("prefixed element", with("<x:group xmlns:x=\"y\" by=\"{Tools.ID}\"/>"), 4, "<x:group>");
        row("element in a cell", withCell("a<b/>c"), 4, "character data");
        row("unknown attribute", with("<nodata href=\"x\"/>"), 4, "href");
        row("attribute of another element", with("<nodata shade=\"#ffffff\"/>"), 4, "shade");
        row("text between elements", with("<nodata>text</nodata>"), 4, "text where none belongs");
        row("second band", with("<nodata/><nodata/>"), 4, "a second <nodata>");
        row("second detail", with("<detail/>"), 5, "a second <detail>");
        row("nothing to read", head + twoColumns + detail + tail, 4, "<from> is missing");
        row("no detail", head + data + twoColumns + tail, 4, "<detail>");
        row("detail without a line", head + data + twoColumns + "<detail><rule/></detail>\n" + tail, 5, "no field");
        // Values
        row("unknown paper", "<report version=\"1\" paper=\"Poster\"/>", 1, "Poster");
        row("margin too small", "<report version=\"1\" margin=\"17\"/>", 1, "from 18 to 144");
        row("size no number", "<report version=\"1\" size=\"nan\"/>", 1, "size");
        row("width missing", head + "<columns>\n<column name=\"a\"/></columns>" + tail, 3, "width");
        row("width of nothing", head + "<columns>\n<column name=\"a\" width=\"0\"/></columns>" + tail, 3, "width");
        row("column twice",
            head + "<columns><column name=\"a\" width=\"1\"/>\n<column name=\"a\" width=\"1\"/></columns>" + tail, 3,
            "second column");
        row("neither yes nor no", head + "<columns>\n<column name=\"a\" width=\"1\" wrap=\"true\"/></columns>" + tail,
            3, "wrap");
        row("unknown column", with("<nodata><line><cell in=\"z\"/></line></nodata>"), 4, "\"z\"");
        row("columns backwards", with("<nodata><line><cell from=\"b\" to=\"a\"/></line></nodata>"), 4, "comes before");
        row("cell nowhere", with("<nodata><line><cell/></line></nodata>"), 4, "from=");
        row("shade in words", head + data + twoColumns + "<detail shade=\"red\"/>" + tail, 4, "#rrggbb");
        row("unknown bar code", with("<nodata><line><cell in=\"a\" barcode=\"qr\"/></line></nodata>"), 4, "qr");
        row("unknown order",
            head + "<data><from table=\"Tools\"/>\n<sort by=\"{Tools.ID}\" order=\"up\"/></data>" + tail, 3, "\"up\"",
            ResultCode::invalidSortDirection);
        row("sorting by a bare name", head + "<data>\n<sort by=\"Tools.ID\"/></data>" + tail, 3, "{Table.Column}");
        row("group by nothing", with("<group/>"), 4, "by is missing");
        row("join that is no equation",
            head + "<data><from table=\"Tools\"/>\n<join table=\"Types\" on=\"Tools.Type\"/></data>" + tail, 3, "on=");
        row("join smuggling text",
            head + "<data><from table=\"Tools\"/>\n<join table=\"Types\" on=\"Tools.Type = Types.ID; delete\"/></data>"
                + tail,
            3, "names no column");
        // Texts and conditions
        row("brace not closed", withCell("{Tools.ID"), 4, "without");
        row("bracket not closed", withCell("{count(}"), 4, "without");
        row("not a column", withCell("{ID}"), 4, "{ID}");
        row("unknown format", withCell("{Tools.ID:roman}"), 4, "roman");
        row("unknown function", withCell("{median(Tools.ID)}"), 4, "median");
        row("sum of nothing", withCell("{sum()}"), 4, "names no column");
        row("unknown special text", withCell("{#secret}"), 4, "secret");
        row("bad condition of a band", with("<nodata when=\"{Tools.ID} like 'x'\"/>"), 4, "comparison");
        row("bad condition of a line", with("<nodata><line when=\"x\"/></nodata>"), 4, "formula");
        row("bad condition of a cell", with("<nodata><line>\n<cell in=\"a\" when=\"{ID}=1\"/></line></nodata>"), 5,
            "{ID}");
        row("bad fixed formula", head + "<data><from table=\"Tools\"/>\n<where>{Tools.ID} =</where></data>" + tail, 3,
            "value");
        // Limits
        const auto lines = [](int count) { return QByteArray("<rule/>").repeated(count); };
        row("as many lines as allowed", with("<nodata>" + lines(200) + "</nodata>"), 0, "", ResultCode::ok);
        row("a line more", with("<nodata>" + lines(201) + "</nodata>"), 4, "200 lines");
        row("a group more", with(QByteArray("<group by=\"{Tools.ID}\"/>").repeated(9)), 4, "8 groups");
        row("a cell more", with("<nodata><line>" + QByteArray("<cell in=\"a\"/>").repeated(65) + "</line></nodata>"), 4,
            "64 cells");
        row("as much text as allowed", withCell(QByteArray(4000, 'x')), 0, "", ResultCode::ok);
        row("a character more", withCell(QByteArray(4001, 'x')), 4, "4000 characters");
        row("a table more",
            head + "<data>\n" + QByteArray("<join table=\"T\" on=\"a.b=c.d\"/>").repeated(16) + "</data>" + tail, 3,
            "16 tables");
        QByteArray manyColumns;
        for (int i = 0; i < 65; ++i)
            manyColumns += "<column name=\"" + QByteArray::number(i) + "\" width=\"1\"/>";
        row("a column more", head + "<columns>" + manyColumns + "</columns>" + tail, 2, "64 columns");
        row("deep", head + data + QByteArray("<detail>").repeated(20'000), 3, "<detail>");
    }

    void refusesWithTheLine()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, line);
        QFETCH(QString, words);
        const ReportError error = errorOf(content);
        QTEST(error.code(), "code");
        if (line == 0)
            return;
        QVERIFY2(error.detail().startsWith(QStringLiteral("Test.rpt, line %1: ").arg(line)), error.what());
        QVERIFY2(error.detail().contains(words, Qt::CaseInsensitive), error.what());
    }

    void refusesFiles_data()
    {
        columns<QString, int>("name", "code");
        row("absent", "Absent.rpt", int(ResultCode::reportNotFound));
        row("a folder", "Folder.rpt", int(ResultCode::reportNotFound));
        row("good", "Good.rpt", int(ResultCode::ok));
    }

    void refusesFiles()
    {
        QFETCH(QString, name);
        const QTemporaryDir folder;
        QDir(folder.path()).mkdir("Folder.rpt");
        writeFile(folder.filePath("Good.rpt"), with(""));
        QTEST(codeOf([&] { TemplateReader::readFile(folder.filePath(name)); }), "code");
    }
};

QTEST_APPLESS_MAIN(TestTemplate)
#include "tst_template.moc"
