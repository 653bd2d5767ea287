-- A small crib with every table of the suite's file, and rows that a wrong translation would list wrongly.
CREATE TABLE Types(ID INTEGER PRIMARY KEY AUTOINCREMENT, Description TEXT, Parent LONG);
INSERT INTO Types VALUES
  (1, 'Drills', 0), (2, 'cutters', 0), (3, 'Carbide', 1), (4, 'HSS', 1), (5, 'bits', 1), (6, 'Äxte', 0), (7, 'axes', 0),
  (8, 'Zangen', 0), (9, 'ÄXTE groß', 6);

CREATE TABLE Locations(ID INTEGER PRIMARY KEY AUTOINCREMENT, Description TEXT, Parent LONG);
INSERT INTO Locations VALUES
  (1, 'Cabinet A', 0), (2, 'cabinet b', 0), (3, 'Drawer 1', 1), (4, 'drawer 2', 1), (5, 'Drawer 10', 1), (6, 'Bob''s shelf', 0);

CREATE TABLE Tools(ID INTEGER PRIMARY KEY AUTOINCREMENT, Type LONG REFERENCES Types(ID), Location LONG REFERENCES Locations(ID),
  Manufacturer TEXT, PartNumber TEXT, Description TEXT NOT NULL, PricePer CURRENCY, Out YESNO NOT NULL DEFAULT 0);
INSERT INTO Tools VALUES
  (1, 3, 3, 'Garrow', 'D-100', 'Jobber drill 3 mm', 12.5, 0),
  (2, 3, 3, 'garrow', 'd-100', 'jobber drill 3 MM', 12.5, 0),
  (3, 4, 4, 'Kestrel', '', 'Tap M6', 8, 0),
  (4, 3, 3, 'Kestrel', 'T-60', 'Tap M8', 9.25, -1),
  (5, 1, 5, NULL, NULL, 'Vise 100%', 149.9, 0),
  (6, 2, 2, 'O''Brien', 'C_1', 'Chuck [big]', 1234.5, -1),
  (7, 2, 2, 'Garrow', '12345', '100', 0, 0),
  (8, 4, 4, '', 'X#1', 'Collet #8', NULL, -1),
  (9, 6, 6, 'Kestrel', 'A-1', 'Bob''s axe', 25, 0);

CREATE TABLE CheckOutIn(ID INTEGER PRIMARY KEY AUTOINCREMENT, Tool_Id LONG, Employee TEXT, JobOrOH LONG, LineItemTypeId LONG,
  DateOut DATETIME, DateIn DATETIME, Active YESNO NOT NULL DEFAULT 0, CheckOutDesc TEXT, CheckOutPartNo TEXT);
INSERT INTO CheckOutIn VALUES
  (1, 4, '12', 1001, 4, '2026-03-04 08:15:00', NULL, -1, 'Tap M8', 'T-60'),
  (2, 6, '7', 300, 5, '2026-03-05 09:00:00', NULL, -1, 'Chuck [big]', 'C_1'),
  (3, 1, '12', 1001, 4, '2025-12-30 10:00:00', '2026-01-02 16:30:00', 0, 'Jobber drill 3 mm', 'D-100'),
  (4, 1, '30', 1002, 4, '2026-02-01 07:00:00', '2026-02-03 00:00:00', 0, 'jobber drill 3 MM', 'd-100'),
  (5, 3, '99', 310, 5, '2026-02-01 23:59:59', '2026-01-02 09:00:00', 0, 'Tap M6', ''),
  (6, 8, '99', 1003, 4, '2026-03-06 12:00:00', NULL, -1, 'Collet #8', 'X#1');

CREATE TABLE Scrap(ID INTEGER PRIMARY KEY AUTOINCREMENT, ToolID LONG, Type LONG, TypeDescription TEXT, Manufacturer TEXT,
  PartNumber TEXT, Description TEXT, PricePer CURRENCY, Location LONG, Employee LONG, ScrapDate DATETIME, JobOrOH LONG,
  LineItemTypeId LONG, Reason LONG, Notes TEXT, Job LONG, Date DATETIME);
INSERT INTO Scrap VALUES
  (16385, 20, 3, 'Carbide', 'Kestrel', 'D-9', 'Drill 9 mm', 4.5, 3, 12, '2026-01-15 10:00:00', 1001, 4, 1, 'tip gone', 1001, '2026-01-15 00:00:00'),
  (16386, 21, 99, 'Old type', NULL, '', 'drill 9 MM', 4.5, 98, 7, '2026-02-15 11:00:00', 300, 5, 2, '', NULL, NULL),
  (16387, 22, 4, 'HSS', '', 'D-9', 'Reamer', 22, 4, 99, '2026-02-15 12:30:00', 1001, 4, 77, 'a', 1002, '2026-02-20 08:00:00'),
  (16388, 23, 4, 'HSS', 'Garrow', 'R-1', 'Reamer 2', 30, 4, 12, '2026-03-01 07:45:00', 310, 5, 3, NULL, 1002, '2026-03-01 00:00:00');

CREATE TABLE ScrapReasons(ID INTEGER PRIMARY KEY AUTOINCREMENT, Description TEXT);
INSERT INTO ScrapReasons VALUES (1, 'Worn out'), (2, 'broken'), (3, 'Lost');

CREATE TABLE Reports(Name TEXT, Description TEXT, Module TEXT, FileName TEXT, "Default" YESNO NOT NULL DEFAULT 0,
  oem YESNO NOT NULL DEFAULT 0);
INSERT INTO Reports VALUES
  ('Tools Out', 'All loans', 'Tools CheckedOut', 'ToolsCheckedOut.rpt', 0, -1),
  ('overdue', 'Long loans', 'tools checkedout', 'Overdue.rpt', -1, 0),
  ('By Type', 'Tools by type', 'Tools Type', 'ToolsByType.rpt', -1, -1),
  ('Junk', 'Scrap', 'Junk Tools', 'Junk.rpt', -1, -1);

CREATE TABLE JobVorlane(ID INTEGER PRIMARY KEY AUTOINCREMENT, Jobno LONG);
INSERT INTO JobVorlane VALUES (1, 501), (2, 777), (3, 502);

CREATE TABLE Employee(EmpID LONG PRIMARY KEY, LastName TEXT, FirstName TEXT, EmpStatus TEXT);
INSERT INTO Employee VALUES
  (12, 'Barnes', 'Alan', 'Active'), (7, 'abbott', 'Beth', 'active'), (30, 'O''Brien', 'Carl', 'Active'),
  (31, 'Zimmer', NULL, 'Active'), (40, 'Gone', 'Away', 'Left');

CREATE TABLE Job(JobNo LONG PRIMARY KEY, Shipped LONG NOT NULL DEFAULT 0);
INSERT INTO Job VALUES (1001, 0), (1002, -1), (1003, 0), (1010, 0);

CREATE TABLE Operation(OperNo LONG PRIMARY KEY, Description TEXT, OperType TEXT);
INSERT INTO Operation VALUES
  (300, 'Set-up', 'O'), (310, 'maintenance', 'O'), (320, 'Cleaning', 'o'), (400, 'Milling', 'P'), (1002, 'Grinding', 'P');

CREATE TABLE LineItemType("Index" LONG PRIMARY KEY, Code TEXT);
INSERT INTO LineItemType VALUES (1, 'Material'), (4, 'Job'), (5, 'Overhead');
