-- Enquiries of 2022/23 with and without links, one of which 2023/24 has already.
INSERT INTO BRIXClient (lID) VALUES (1);
INSERT INTO Source (SourceID, ClientID, Year, SourceTypeID, Description, bUserCreated) VALUES (1, 1, 2023, 1, 'Tax Return', 0), (2, 1, 2023, 2, 'Books', 1), (3, 1, 2024, 2, 'BOOKS', 1), (4, 1, 2023, 2, 'Rent', 1);
INSERT INTO SourceType (SourceTypeID, Description) VALUES (2, 'Other');
INSERT INTO SourceTask (SourceID, TypeID) VALUES (3, 5);
INSERT INTO ClientEnquiry (lID, lClientID, nYear, strDescription, bCarryForward, SourceID, SourceTypeID, TypeID) VALUES (1, 1, 2023, 'return', 1, 1, 0, 5), (2, 1, 2023, 'books', 1, 2, NULL, 5), (3, 1, 2023, 'task', 1, 2, 2, 7), (4, 1, 2023, 'rent', 1, 4, 2, 5), (5, 1, 2023, 'gone', 1, 66, NULL, 5), (6, 1, 2023, 'no type', 1, 66, 9, 5), (7, 1, 2023, 'plain ''%s''', 1, 0, 0, 0), (8, 1, 2023, 'once', 0, 1, 1, 1), (9, 1, 2023, 'THERE', 1, 1, 1, 1), (10, 1, 2024, 'there', 1, NULL, NULL, NULL), (11, 1, 2023, 'return', 1, 1, 1, NULL);
