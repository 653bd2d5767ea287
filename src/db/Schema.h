#pragma once

#include "platform/engine/Database.h"

#include <vector>

/// What a crib's database file consists of. The tool tables are this program's own; employees,
/// jobs, operations and charge kinds belong to the suite.
namespace Schema {

/// All tables, a table before those that refer to it.
const std::vector<TableDefinition> &tables();

/// The kinds of charge of a loan or a scrapped tool, LineItemType.Index.
inline constexpr int jobCharge = 4;
inline constexpr int overheadCharge = 5;

/// Loans carry tool numbers in 16 bits.
inline constexpr int highestToolNumber = 32767;
/// So do the trees with the numbers of types and locations.
inline constexpr int highestFolderNumber = 32767;
/// Manufacturers from elsewhere are stored up to here: a restored tool keeps what it was scrapped with.
inline constexpr int longestManufacturer = 255;
/// Nobody types more characters of one, nor a higher price, of a new tool.
inline constexpr int longestTypedManufacturer = 25;
inline constexpr double highestTypedPrice = 9'999'999.99;
/// Purging a scrap record also deletes the live tool of the record's own number, so scrap records
/// are numbered where tools seldom get to.
inline constexpr int firstScrapNumber = 16384;

/// Fills a new, empty database with all tables, indexes and relations and the rows that no crib
/// goes without: the two kinds of charge and the shipped report templates.
void create(Database &database);
/// The same within a transaction of the caller's.
void fill(Database &database);

/// Lets attendants change the program's own tables and read the suite's, nothing else; on a server, where each has an
/// account of his own.
void admitAttendants(Database &database);

}
