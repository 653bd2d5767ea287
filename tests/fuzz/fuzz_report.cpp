#include "db/Schema.h"
#include "platform/engine/Workspace.h"
#include "platform/reportengine/DataSource.h"
#include "platform/reportengine/Pagination.h"
#include "platform/reportengine/TemplateReader.h"

#include <QGuiApplication>
#include <QTemporaryDir>

namespace {

/// A crib with a few records in it, and the fonts that a layout needs.
struct Surroundings {
    Surroundings()
        : application(argumentCount, &argument),
          database(Workspace::first().createDatabase(folder.filePath("crib.mdb")))
    {
        Schema::create(*database);
        database->executeNative(
            "INSERT INTO Employee VALUES (7, 'Zorn', 'Ada', 'Active'), (8, 'adams', NULL, NULL);"
            "INSERT INTO Types (Description) VALUES ('Drills'); INSERT INTO Locations (Description) VALUES ('Cabinet');"
            "INSERT INTO ScrapReasons (Description) VALUES ('Broken');"
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 50) INSERT INTO CheckOutIn"
            " (Tool_Id, Employee, LineItemTypeId, JobOrOH, DateOut, CheckOutDesc) SELECT i, 7 + i % 2, 4, i, "
            "'2024-01-02 03:04:05', 'Drill ' || i FROM n;"
            "INSERT INTO Tools (Type, Location, Description, PricePer) SELECT 1, 1, CheckOutDesc, ID / 4.0 FROM "
            "CheckOutIn;"
            "INSERT INTO Scrap (Description, Employee, Reason, PricePer, Notes) SELECT CheckOutDesc, 8, 1, NULL, "
            "char(10) || 'x' FROM CheckOutIn");
    }

    int argumentCount = 1;
    char name[5] = "fuzz";
    char *argument = name;
    QGuiApplication application;
    QTemporaryDir folder;
    std::unique_ptr<Database> database;
};

}

/// A template, or a formula over the loans where it does not look like one, is read, filled and laid out, or refused;
/// nothing else may happen.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Surroundings surroundings;
    static const QByteArray loans =
        "<report version=\"1\"><data><from table=\"CheckOutIn\"/><join table=\"Employee\" on=\"CheckOutIn.Employee = "
        "Employee.EmpID\"/></data><columns><column name=\"a\" width=\"1\"/></columns><detail><line><cell in=\"a\">"
        "{CheckOutIn.ID}</cell></line></detail></report>";
    const QByteArray text(reinterpret_cast<const char *>(data), qsizetype(size));
    const bool isTemplate = text.trimmed().startsWith('<');
    try {
        Template report = TemplateReader::read(isTemplate ? text : loans, "Fuzz.rpt");
        Formula selection = Formula::parse(isTemplate ? QString() : QString::fromUtf8(text), report.fields);
        const GroupedRecords records = DataSource(*surroundings.database, report, selection).read([](double) {});
        BandComposer composer(report, records, {}, QDateTime({2024, 5, 6}, {7, 8}));
        Pagination layout(report, records, composer);
        layout.advance(QDeadlineTimer(500));
        for (int page = 0; page < std::min(layout.pageCount(), 3); ++page)
            layout.elements(page);
    } catch (const ReportError &) {
    }
    return 0;
}
