#pragma once

#include "transactions/Lending.h"

#include <QDateTime>

/// One change that the desk made, as much as is needed to take it back exactly. A tool that goes from one person to
/// another is one deed; so is what a count noted.
struct Deed {
    QDateTime when = {};
    qint16 toolId = 0;
    QString tool = {}; ///< "T12 Torque wrench"
    QString partNumber = {};
    struct Side {
        QString who = {};
        QString charge = {};
    };
    Lending::Return returned = {};
    Side returnedFrom = {};
    qint64 loan = 0; ///< that was made
    Side lentTo = {};
    qint32 movedFrom = 0, movedTo = 0; ///< locations
    QString mark = {}; ///< key of a count's mark, of a deed that is nothing else

    bool isReturn() const { return returned.toolId != 0; }
    bool isLoan() const { return loan != 0; }
    bool isMove() const { return movedTo != 0; }
};

/// One line of what was done, for the list.
struct DeedLine {
    QDateTime when;
    int icon = 0; ///< an ItemIcon
    QString what;
    QString tool;
    QString partNumber;
    Deed::Side side = {};
};
