#include "bench/Crib.h"

#include "admin/Admin.h"
#include "db/Session.h"
#include "platform/system/ProgramFolder.h"

#include <QApplication>
#include <QDir>
#include <QTextStream>

Crib::Crib(const SampleCrib::Scale &scale, const QString &cache)
    : m_folder(cache + "/run-XXXXXX"), m_sample(cache + '/' + scale.name + ".mdb")
{
    if (!QFile::exists(m_sample)) {
        QTextStream out(stdout), errors(stderr);
        if (runAdmin({"sample", "--scale", scale.name, m_sample}, out, errors) != 0)
            qFatal("The sample database cannot be made.");
    }
    ProgramFolder::setPath(m_folder.path());
    open();
    drills = m_floor->number("SELECT ID FROM Types WHERE Description='Drills'");
    m_frame = std::make_unique<FakeFrame>();
    explorer().Startup(false);
    QApplication::processEvents();
}

Crib::~Crib()
{
    m_frame.reset();
    close();
}

void Crib::open()
{
    if (!QFile::copy(m_sample, file()))
        qFatal("The sample database cannot be copied.");
    m_floor = std::make_unique<Floor>(file().toUtf8());
    const QByteArray biggest = "SELECT Type FROM Tools GROUP BY Type ORDER BY count(*) DESC LIMIT 1";
    bigType = m_floor->number(biggest);
    m_floor->run("WITH RECURSIVE below(id) AS (SELECT ID FROM Types WHERE Description='Drills'"
                 " UNION SELECT Types.ID FROM Types JOIN below ON Parent=below.id),"
                 " others AS (SELECT * FROM Tools WHERE Type NOT IN (SELECT id FROM below)"
                 " AND Type <> ("
                 + biggest
                 + "))"
                   " UPDATE Tools SET Type=(SELECT min(Type) FROM others)"
                   " WHERE ID IN (SELECT ID FROM others LIMIT 5000)");
    hugeType = m_floor->number(biggest);
    Session::open(file());
}

void Crib::close()
{
    Session::close();
    m_floor.reset();
    QFile::remove(file());
}

void Crib::renew()
{
    close();
    open();
}

void Crib::view(int option)
{
    explorer().findChild<QRadioButton *>(QStringLiteral("optMode%1").arg(option))->setChecked(true);
}

void Crib::click(int type)
{
    TreeView *tree = explorer().ui.tvMain;
    KeyedTree::Node *node = tree->nodes().find(QStringLiteral("l%1").arg(type));
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
