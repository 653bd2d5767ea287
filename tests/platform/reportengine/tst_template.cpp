#include "platform/reportengine/UsualPaper.h"
#include "tests/platform/reportengine/ReportCrib.h"

namespace {

const QByteArray head = "<report version=\"1\">\n";
const QByteArray data = "<data><from table=\"Tools\"/></data>\n";
const QByteArray twoColumns =
    "<columns><column name=\"a\" width=\"1\"/><column name=\"b\" width=\"2\" wrap=\"yes\"/></columns>\n";
const QByteArray detail = "<detail><line><cell in=\"a\">{Tools.ID}</cell></line></detail>\n";
const QByteArray tail = "</report>\n";

/// A template whose fourth line is `part`.
QByteArray with(const QByteArray &part)
{
    return head + data + twoColumns + part + '\n' + (part.startsWith("<detail") ? "" : detail) + tail;
}

QByteArray withCell(const QByteArray &text)
{
    return with("<nodata><line><cell in=\"a\">" + text + "</cell></line></nodata>");
}

}

class TestTemplate : public QObject
{
    Q_OBJECT

private slots:
    void usualPaper()
    {
        for (const auto &[locale, paper] : {std::pair("de_AT", QPageSize::A4),
                                            {"fr_CA", QPageSize::Letter},
                                            {"en_GB", QPageSize::A4},
                                            {"C", QPageSize::Letter}})
            QCOMPARE(UsualPaper::in(QLocale(locale).territory()).id(), paper);
        const auto paperOf = [](QByteArray content) { return TemplateReader::read(content, "Test.rpt").paper.id(); };
        QCOMPARE(paperOf(with("")), QPageSize::Letter);
        UsualPaper::ask([] { return QPageSize(QPageSize::A4); });
        QCOMPARE(paperOf(with("")), QPageSize::A4);
        QCOMPARE(paperOf(with("").replace("version", "paper=\"Letter\" version")), QPageSize::Letter);
    }

    void refusesWithTheLine_data()
    {
        const auto row = [](const char *name, const QByteArray &content, int line, const QString &words,
                            int code = ResultCode::cannotLoadReport) { ::row(name, content, line, words, code); };
        // The file as a whole
        row("binary", QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1\0\0\0\0", 12), 1, "UTF-8");
        row("another encoding", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + with(""), 1, "encoding");
        row("document type", "<!DOCTYPE report [<!ENTITY a \"b\">]>\n" + with(""), 1, "document type");
        row("too large", with("<!--" + QByteArray(TemplateReader::maxBytes, ' ') + "-->"), 1, "larger");
        // Elements and attributes
        row("unknown element", with("<script/>"), 4, "<script>");
        row("second band", with("<nodata/><nodata/>"), 4, "a second <nodata>");
        row("detail without a line", head + data + twoColumns + "<detail><rule/></detail>\n" + tail, 5, "no field");
        // Values
        row("unknown paper", "<report version=\"1\" paper=\"Poster\"/>", 1, "Poster");
        row("margin too small", "<report version=\"1\" margin=\"17\"/>", 1, "from 18 to 144");
        row("a unit that there is not", "<report version=\"1\" margin=\"1cm\"/>", 1, "no length");
        row("a size of its own and a paper", "<report version=\"1\" width=\"62mm\" height=\"29mm\" paper=\"A4\"/>", 1,
            "either");
        row("labels that leave no width",
            with("<detail across=\"20\" gap=\"0.5in\"><line><cell in=\"a\">{Tools.ID}</cell></line></detail>"), 5,
            "no width");
        row("labels that may be left blank", with("<detail across=\"2\" when=\"{Tools.ID} = 1\"/>"), 4, "<where>");
        row("no record, yet a field", head + twoColumns + detail + tail, 4, "<from> is missing");
        row("neither record nor field", head + twoColumns + "<detail><rule/></detail>\n" + tail, 0, "", ResultCode::ok);
        row("width missing", head + "<columns>\n<column name=\"a\"/></columns>" + tail, 3, "width");
        row("column twice",
            head + "<columns><column name=\"a\" width=\"1\"/>\n<column name=\"a\" width=\"1\"/></columns>" + tail, 3,
            "second column");
        row("unknown order",
            head + "<data><from table=\"Tools\"/>\n<sort by=\"{Tools.ID}\" order=\"up\"/></data>" + tail, 3, "\"up\"",
            ResultCode::invalidSortDirection);
        row("join that is no equation",
            head + "<data><from table=\"Tools\"/>\n<join table=\"Types\" on=\"Tools.Type\"/></data>" + tail, 3, "on=");
        row("join smuggling text",
            head + "<data><from table=\"Tools\"/>\n<join table=\"Types\" on=\"Tools.Type = Types.ID; delete\"/></data>"
                + tail,
            3, "names no column");
        // Texts and conditions
        row("unknown format", withCell("{Tools.ID:roman}"), 4, "roman");
        row("bad condition of a band", with("<nodata when=\"{Tools.ID} like 'x'\"/>"), 4, "comparison");
        row("bad fixed formula", head + "<data><from table=\"Tools\"/>\n<where>{Tools.ID} =</where></data>" + tail, 3,
            "value");
        row("a chart where groups are not known", with("<nodata><chart value=\"{count()}\"/></nodata>"), 4, "<chart>");
        const auto withChart = [](const QByteArray &value) {
            return with("<reportheader><chart value=\"" + value + "\"><label>a</label></chart></reportheader>");
        };
        row("a chart without groups", withChart("{count()}"), 4, "no group");
        row("a chart of no number", withChart("{Tools.ID}"), 4, "value=");
        // Limits
        const auto lines = [](int count) { return QByteArray("<rule/>").repeated(count); };
        row("as many lines as allowed", with("<nodata>" + lines(200) + "</nodata>"), 0, "", ResultCode::ok);
        row("a line more", with("<nodata>" + lines(201) + "</nodata>"), 4, "200 lines");
        row("a group more", with(QByteArray("<group by=\"{Tools.ID}\"/>").repeated(9)), 4, "8 groups");
        row("a character more", withCell(QByteArray(4001, 'x')), 4, "4000 characters");
        row("a table more",
            head + "<data>\n" + QByteArray("<join table=\"T\" on=\"a.b=c.d\"/>").repeated(16) + "</data>" + tail, 3,
            "16 tables");
        QByteArray manyColumns;
        for (int i = 0; i < 65; ++i)
            manyColumns += "<column name=\"" + QByteArray::number(i) + "\" width=\"1\"/>";
        row("a column more", head + "<columns>" + manyColumns + "</columns>" + tail, 2, "64 columns");
    }

    void refusesWithTheLine()
    {
        const auto [content, line, words, code] = fetched<QByteArray, int, QString, int>();
        QString detail;
        QCOMPARE(codeOf([&] { TemplateReader::read(content, "Test.rpt"); }, &detail), code);
        const QString place = QStringLiteral("Test.rpt, line %1: ").arg(line);
        QVERIFY2(line == 0 || (detail.startsWith(place) && detail.contains(words, Qt::CaseInsensitive)),
                 qPrintable(detail));
    }
};

QTEST_APPLESS_MAIN(TestTemplate)
#include "tst_template.moc"
