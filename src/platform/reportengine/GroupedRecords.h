#pragma once

#include "platform/reportengine/Template.h"

#include <span>
#include <vector>

/// What the values of a field come to. Empty ones do not count.
class FieldTally
{
public:
    void add(const Value &value, FieldKind kind);
    void add(const FieldTally &other, FieldKind kind);
    /// Empty where no value counts, but for a count.
    Value result(Aggregate::Function function) const;

private:
    void addAmount(double amount);
    void stretchTo(const Value &value, FieldKind kind);

    int m_present = 0;
    // Adds without losing the small amounts beside a large sum.
    double m_total = 0;
    double m_lost = 0;
    Value m_smallest;
    Value m_largest;
};

/// Records of which each stands for all that print alike.
struct FoldedRecords {
    std::vector<int> counts = {}; ///< of the records that each stands for; none where nothing was folded
    std::vector<int> fields = {}; ///< those that are added up
    std::vector<FieldTally> tallies = {}; ///< of one record after the other, a tally for each of these fields
};

/// The records that a report prints, in the order in which it prints them, with their groups and the numbers over
/// those.
class GroupedRecords
{
public:
    static constexpr int maxCount = 200'000; // rows

    /// The rows of one group, or of the report.
    struct Run {
        int first = 0;
        int last = -1;
    };

    GroupedRecords() = default;
    /// `values` are those of one record after the other, a value for each field of the template. A template without
    /// fields has one record.
    GroupedRecords(const Template &report, std::vector<Value> values, FoldedRecords folded = {});

    /// The rows; each is a record, or several that print alike.
    int count() const { return int(m_order.size()); }
    int recordCount() const;
    bool isFolded() const { return !m_folded.counts.empty(); }
    /// The values of a row, by the numbers of their fields.
    const Value *record(int row) const { return m_values.data() + size_t(m_order[row]) * m_width; }
    /// The rows of the group that `row` is in; level 0 is the outermost group.
    const Run &run(int level, int row) const { return m_runs[level][m_runOfRow[level][row]]; }
    /// The groups of a level that are in the same group of the level above it, or in the report, as `row`.
    std::span<const Run> groupsIn(int level, int row) const;
    /// The outermost group that begins with `row`; the number of levels when none does.
    int firstOpening(int row) const;
    /// The outermost group that ends with `row`; the number of levels when none does.
    int firstClosing(int row) const;
    /// Aggregate `number` of the template for the group that `row` is in.
    const Value &aggregate(int number, int row) const;
    /// The same for the records of several groups together.
    Value over(int number, std::span<const Run> groups) const;

private:
    using Ranks = std::vector<int>;
    const Value &stored(int position, int field) const { return m_values[size_t(position) * m_width + field]; }
    Ranks ranks(int field, FieldKind kind, Group::Period period = Group::EachValue) const;
    void arrange(const Template &report);
    void findRuns(const std::vector<Ranks> &groupRanks);

    size_t m_width = 0;
    std::vector<Value> m_values;
    FoldedRecords m_folded;
    std::vector<int> m_order; ///< position among the values of each row
    std::vector<std::vector<Run>> m_runs; ///< by level
    std::vector<std::vector<int>> m_runOfRow; ///< by level, the number of each row's run
    struct Numbers {
        Aggregate aggregate;
        FieldKind kind;
        std::vector<Value> values; ///< by run
    };
    std::vector<Numbers> m_aggregates;
};
