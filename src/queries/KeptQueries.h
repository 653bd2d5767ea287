#pragma once

#include "queries/Criterion.h"

#include <QDate>
#include <QJsonObject>
#include <QStringList>

#include <stdexcept>
#include <vector>

/// A row of a query form that is switched on, as it is kept.
struct KeptCriterion {
    QString useBox; ///< the row's name
    Entry entry;
    QString period = {}; ///< one of KeptQueries::periods(), in place of the days; empty where they count

    /// The days of its period as they are on the day `today`; without a period what was kept.
    Entry entryOn(QDate today) const;
};

/// Why the kept queries cannot be read or stored, in words.
class KeptQueriesError : public std::runtime_error
{
public:
    explicit KeptQueriesError(const QString &text) : std::runtime_error(text.toStdString()) { }
};

/// The queries that attendants keep under names, those of one form. They lie in a file of the crib folder, for all
/// desks that share it; each call looks at it anew.
class KeptQueries
{
public:
    explicit KeptQueries(const QString &form) : m_form(form) { }

    /// What a date may stand for, meant anew each time: "this month".
    static QStringList periods();

    /// In the order of texts. @throws KeptQueriesError, as all of them.
    QStringList names() const;
    std::vector<KeptCriterion> criteria(const QString &name) const;
    /// @returns false, and keeps nothing, where there is a query of that name that may not be replaced.
    bool keep(const QString &name, const std::vector<KeptCriterion> &criteria, bool mayReplace) const;
    void remove(const QString &name) const;

private:
    QJsonObject queries() const;
    bool change(const QString &name, const QJsonValue &criteria, bool mayReplace) const;

    QString m_form;
};
