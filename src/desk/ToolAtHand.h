#pragma once

#include "transactions/Lending.h"

#include <optional>

/// A tool that was scanned, as the crib has it just now.
struct ToolAtHand {
    qint16 id = 0;
    QString description = {};
    QString partNumber = {};
    qint32 location = 0;
    bool isOut = false;
    Lending::OpenLoan loan = {}; ///< of a tool that is out

    /// "T12 Torque wrench"
    QString name() const;

    /// Nothing for a number that no tool in the crib has.
    static std::optional<ToolAtHand> find(qint64 number);
    /// Why there is none: scrapped, or unknown; and what to do.
    static QString whyNot(qint64 number);
    static bool isScrapped(qint64 number);
};
