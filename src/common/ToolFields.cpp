#include "common/ToolFields.h"

#include "db/Schema.h"
#include "platform/gui/MsgBox.h"

bool MainSubs::ValidData(const QString &location, const QString &type, const QString &manufacturer,
                         const QString &description)
{
    QString problem;
    if (location.isEmpty())
        problem = "Location may not be blank!";
    else if (type.isEmpty())
        problem = "Tool Type may not be blank!";
    else if (manufacturer.length() > Schema::longestManufacturer)
        problem = "Manufacturer may not be longer than 255 characters!";
    else if (description.isEmpty())
        problem = "Description may not be blank!";
    else
        return true;
    inform(problem);
    return false;
}
