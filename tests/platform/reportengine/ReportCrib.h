#pragma once

#include "platform/reportengine/ResultCode.h"
#include "platform/reportengine/TemplateReader.h"
#include "platform/system/ProgramFolder.h"
#include "tests/support/BothEngines.h"
#include "tests/support/DataRows.h"
#include "tests/support/EmptyCrib.h"
#include "tests/support/Files.h"

#include <QtTest>

/// A program folder of its own with an empty crib in it.
class ReportCrib
{
public:
    ReportCrib() : database(Workspace::first().openDatabase(folder.filePath("crib.mdb")))
    {
        ProgramFolder::setPath(folder.path());
        dontWaitForDisk(*database);
    }
    ~ReportCrib() { ProgramFolder::setPath({}); }

    void execute(const QString &statement) { database->execute(statement); }
    void fill(const QString &native) { ServerDatabase::run(*database, native); }
    void addTemplate(const QString &name, const QByteArray &content) const
    {
        writeFile(folder.filePath(name), content);
    }

    QTemporaryDir folder;
    const EmptyCrib crib{folder.filePath("crib.mdb")};
    std::unique_ptr<Database> database;
};

/// Code of the error that an action ends with, 0 where it ends well; with its detail, where asked for.
template<typename Action>
int codeOf(Action action, QString *detail = nullptr)
{
    try {
        action();
    } catch (const ReportError &error) {
        if (detail)
            *detail = error.detail();
        return error.code();
    }
    return ResultCode::ok;
}
