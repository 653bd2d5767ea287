#include "admin/CsvKind.h"

#include "db/Schema.h"

#include <algorithm>

const std::vector<CsvKind> &CsvKind::all()
{
    using enum CsvColumn::Kind;
    const auto number = [](const char *column, const char *other) {
        return CsvColumn{.heading = "Number",
                         .column = column,
                         .kind = Number,
                         .isRequired = true,
                         .otherHeadings = {other},
                         .isUnique = true};
    };
    const auto path = [](const char *heading, const char *column, CsvColumn::Kind kind, const QStringList &others) {
        return CsvColumn{
            .heading = heading, .column = column, .kind = kind, .isRequired = true, .otherHeadings = others};
    };
    static const std::vector<CsvKind> kinds{
        {"types", "Types", {path("Description", "ID", TypePath, {"Type", "Tool Type"})}, "ID"},
        {"locations", "Locations", {path("Description", "ID", LocationPath, {"Location"})}, "ID"},
        {"tools",
         "Tools",
         {{.heading = "Description", .column = "Description", .isRequired = true},
          {.heading = "Manufacturer",
           .column = "Manufacturer",
           .longest = Schema::longestManufacturer,
           .longestTyped = Schema::longestTypedManufacturer},
          {.heading = "Part Number", .column = "PartNumber"},
          {.heading = "Price", .column = "PricePer", .kind = Price, .otherHeadings = {"Price Per", "Cost Each"}},
          path("Type", "Type", TypePath, {"Tool Type"}),
          path("Location", "Location", LocationPath, {}),
          {.heading = "Quantity", .column = {}, .kind = Quantity}},
         "ID"},
        {"employees",
         "Employee",
         {number("EmpID", "Emp ID"),
          {.heading = "Last Name", .column = "LastName"},
          {.heading = "First Name", .column = "FirstName"},
          // Only those are offered.
          {.heading = "Status", .column = "EmpStatus", .otherHeadings = {"Emp Status"}, .whenAbsent = "Active"}},
         "EmpID"},
        {"jobs",
         "Job",
         {number("JobNo", "Job No"), {.heading = "Shipped", .column = "Shipped", .kind = YesNo, .whenAbsent = "no"}},
         "JobNo"},
        {"operations",
         "Operation",
         {number("OperNo", "Oper No"),
          {.heading = "Description", .column = "Description"},
          {.heading = "Kind", .column = "OperType", .otherHeadings = {"Oper Type"}, .whenAbsent = "O"}},
         "OperNo"},
        {"reasons",
         "ScrapReasons",
         {{.heading = "Description",
           .column = "Description",
           .isRequired = true,
           .otherHeadings = {"Reason"},
           .isUnique = true}},
         "ID"},
    };
    return kinds;
}

bool CsvKind::has(CsvColumn::Kind sort) const
{
    return std::ranges::find(columns, sort, &CsvColumn::kind) != columns.end();
}
