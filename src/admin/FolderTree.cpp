#include "admin/FolderTree.h"

#include "admin/CsvFaults.h"
#include "admin/RowWriter.h"
#include "db/Schema.h"
#include "platform/text/Numbers.h"
#include "platform/text/TextCompare.h"

#include <QSet>

FolderTree::FolderTree(const QString &table, Database *database)
    : m_table(table), m_word(table == "Types" ? "type" : "location")
{
    if (!database)
        return;
    const Recordset rows = database->openRecordset("SELECT ID, Description, Parent FROM " + table + " ORDER BY ID");
    for (int row = 0; row < rows.recordCount(); ++row) {
        const qint64 number = rows.at(row, 0).toInteger();
        m_folders.insert(number, {rows.at(row, 1).toText(), rows.at(row, 2).toInteger()});
        m_byName.insert(foldCase(rows.at(row, 1).toText().simplified()), number);
    }
    m_firstMade = m_next = database->nextNumber(table);
}

qint64 FolderTree::at(const QString &path)
{
    qint64 folder = 0;
    for (const QString &name : partsOf(path)) {
        const qint64 below = folder == 0 ? firstOf(path, name) : child(folder, name);
        folder = below != 0 ? below : make(name, folder);
    }
    return folder;
}

void FolderTree::add(const QString &path)
{
    const qint64 next = m_next, folder = at(path);
    for (qint64 above = next; above < m_next - 1; ++above)
        m_folders[above].isAbove = true;
    if (folder < next && !std::exchange(m_folders[folder].isAbove, false))
        throw CellFault("there is a " + m_word + ' ' + inMarks(pathOf(folder)) + " already");
}

QStringList FolderTree::partsOf(const QString &path) const
{
    // A name may have a "/" in it.
    const bool isName = !path.contains('\\') && m_byName.contains(foldCase(path.simplified()));
    QStringList parts = isName ? QStringList(path) : path.split(path.contains('\\') ? '\\' : '/');
    if (parts.size() > 1 && parts.front().isEmpty())
        parts.removeFirst(); // begins at the top
    for (QString &part : parts) {
        part = part.simplified();
        if (part.isEmpty())
            throw CellFault(inMarks(path) + " has a folder without a name");
    }
    return parts;
}

qint64 FolderTree::child(qint64 parent, const QString &name) const
{
    for (const qint64 folder : m_byName.values(foldCase(name)))
        if (m_folders[folder].parent == parent)
            return folder;
    return 0;
}

qint64 FolderTree::firstOf(const QString &path, const QString &name) const
{
    const qint64 atTop = child(0, name);
    if (atTop != 0 || path.startsWith('\\'))
        return atTop;
    const QList<qint64> anywhere = m_byName.values(foldCase(name));
    if (anywhere.size() > 1)
        throw CellFault(QString("several folders are called %1; write the whole path").arg(inMarks(name)));
    return anywhere.value(0);
}

qint64 FolderTree::make(const QString &name, qint64 parent)
{
    if (isNumeric(name))
        throw CellFault(inMarks(name) + " is a number, which no " + m_word + " may be called");
    if (const qint64 other = m_byName.value(foldCase(name)))
        throw CellFault("there is a " + m_word + ' ' + inMarks(name) + " already, as " + inMarks(pathOf(other)));
    if (m_next > Schema::highestFolderNumber)
        throw CellFault(QString("the numbers of %1s end at %2").arg(m_word).arg(Schema::highestFolderNumber));
    m_folders.insert(m_next, {name, parent});
    m_byName.insert(foldCase(name), m_next);
    return m_next++;
}

QString FolderTree::pathOf(qint64 number) const
{
    QStringList names;
    QSet<qint64> seen; // where folders lie below one another in a circle
    for (auto at = m_folders.find(number); at != m_folders.end() && !seen.contains(at.key());
         at = m_folders.find(at->parent)) {
        seen.insert(at.key());
        names.prepend(at->name);
    }
    const QString path = names.join('\\');
    return path.contains('/') && !path.contains('\\') ? '\\' + path : path;
}

QStringList FolderTree::made() const
{
    QStringList paths;
    for (qint64 number = m_firstMade; number < m_next; ++number)
        paths << pathOf(number);
    return paths;
}

void FolderTree::store(Database &database) const
{
    RowWriter rows(database, m_table, {"ID", "Description", "Parent"});
    for (qint64 number = m_firstMade; number < m_next; ++number)
        rows.add({number, m_folders[number].name, m_folders[number].parent});
    rows.flush();
}
