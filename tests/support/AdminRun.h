#pragma once

#include "admin/Admin.h"

/// One run of vorlane-admin in this process: what it printed and its exit status.
struct AdminRun {
    explicit AdminRun(const QStringList &arguments)
    {
        QTextStream outStream(&out), errorStream(&errors);
        status = runAdmin(arguments, outStream, errorStream);
    }

    QString out;
    QString errors;
    int status;
};
