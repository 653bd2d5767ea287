#include "bench/Crib.h"

#include "admin/Admin.h"
#include "db/Session.h"
#include "platform/system/ProgramFolder.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QTextStream>

namespace {

// What the operations need to find their rows, written down once more: where the program's own files lack one of these,
// the floor does not.
constexpr auto neededIndexes =
    "CREATE INDEX IF NOT EXISTS Types_Parent_Description ON Types(Parent, Description);"
    "CREATE INDEX IF NOT EXISTS Locations_Parent_Description ON Locations(Parent, Description);"
    "CREATE INDEX IF NOT EXISTS Tools_Type ON Tools(Type);"
    "CREATE INDEX IF NOT EXISTS Tools_Location ON Tools(Location);"
    "CREATE INDEX IF NOT EXISTS Tools_Out_Description ON Tools(Out, Description);"
    "CREATE INDEX IF NOT EXISTS CheckOutIn_Tool_Id_Active ON CheckOutIn(Tool_Id, Active);"
    "CREATE INDEX IF NOT EXISTS Scrap_LineItemTypeId_JobOrOH ON Scrap(LineItemTypeId, JobOrOH);"
    "CREATE INDEX IF NOT EXISTS Scrap_JobOrOH ON Scrap(JobOrOH);";

constexpr auto biggestType = "SELECT Type FROM Tools GROUP BY Type ORDER BY count(*) DESC LIMIT 1";

void copyFile(const QString &from, const QString &to)
{
    QFile::remove(to);
    if (!QFile::copy(from, to))
        qFatal("The sample database cannot be copied.");
}

// A file that an older program made may lack what this one would put into it.
bool isUpToDate(const QString &sample)
{
    return QFile::exists(sample)
        && QFileInfo(sample).lastModified() > QFileInfo(QCoreApplication::applicationFilePath()).lastModified();
}

}

Crib::Crib(const SampleCrib::Scale &scale, const QString &cache)
    : m_folder(cache + "/run-XXXXXX"), m_sample(m_folder.filePath("sample.mdb"))
{
    const QString sample = cache + '/' + scale.name + ".mdb";
    if (!isUpToDate(sample)) {
        QFile::remove(sample);
        QTextStream out(stdout), errors(stderr);
        if (runAdmin({"sample", "--scale", scale.name, sample}, out, errors) != 0)
            qFatal("The sample database cannot be made.");
    }
    copyFile(sample, m_sample);
    Floor changes(m_sample.toUtf8());
    drills = changes.number("SELECT ID FROM Types WHERE Description='Drills'");
    bigType = changes.number(biggestType);
    changes.run(QByteArray("WITH RECURSIVE below(id) AS (SELECT ID FROM Types WHERE Description='Drills'"
                           " UNION SELECT Types.ID FROM Types JOIN below ON Parent=below.id),"
                           " others AS (SELECT * FROM Tools WHERE Type NOT IN (SELECT id FROM below)"
                           " AND Type <> (")
                + biggestType
                + "))"
                  " UPDATE Tools SET Type=(SELECT min(Type) FROM others)"
                  " WHERE ID IN (SELECT ID FROM others LIMIT 5000)");
    hugeType = changes.number(biggestType);

    ProgramFolder::setPath(m_folder.path());
    renew();
    openExplorer();
}

Crib::Crib(const QString &connectionFile)
{
    Session::open(connectionFile);
    QHash<qint64, int> tools;
    for (Recordset rows = openRecordset("SELECT Type FROM Tools"); !rows.atEnd(); rows.moveNext())
        ++tools[rows.field(u"Type").toInteger()];
    for (const auto &[type, count] : tools.asKeyValueRange())
        if (count > tools.value(bigType))
            bigType = int(type);
    openExplorer();
}

void Crib::openExplorer()
{
    m_frame = std::make_unique<FakeFrame>();
    explorer().Startup(false);
    QApplication::processEvents();
}

Crib::~Crib()
{
    m_frame.reset();
    Session::close();
}

void Crib::renew()
{
    Session::close();
    m_floor.reset();
    const QString ours = m_folder.filePath("dorvak.mdb"), theirs = m_folder.filePath("floor.mdb");
    copyFile(m_sample, ours);
    copyFile(m_sample, theirs);
    m_floor = std::make_unique<Floor>(theirs.toUtf8());
    m_floor->run(neededIndexes);
    Session::open(ours);
}

void Crib::view(int option)
{
    explorer().findChild<QRadioButton *>(QStringLiteral("optMode%1").arg(option))->setChecked(true);
}

void Crib::click(int type)
{
    TreePane *tree = explorer().ui.tvMain;
    KeyedTree::Node *node = type == 0 ? tree->nodes().root() : tree->nodes().find(QStringLiteral("l%1").arg(type));
    tree->selectNode(node);
    emit tree->nodeClicked(node);
}

void Crib::selectToolInStock(int type)
{
    view(0);
    click(type);
    const KeyedList &items = explorer().ui.lstToolList->items();
    int row = 0;
    while (!items.item(row).key.startsWith('r'))
        ++row;
    explorer().selectItem(items.item(row).key);
}
