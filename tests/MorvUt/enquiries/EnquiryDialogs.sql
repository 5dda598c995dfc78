-- What ANNA finds: a client's source with two tasks, and enquiries of two years.
INSERT INTO BRIXUser (lID, strUserID) VALUES (1, 'ANNA');
INSERT INTO BRIXUserPermissions (lID, strUserID, nPermission, bAllowed) VALUES (1, 'ANNA', 34, 1);
INSERT INTO BRIXClient (lID, strCode) VALUES (1, 'A');
INSERT INTO Source (SourceID, ClientID, Year, SourceTypeID, Description) VALUES (10, 1, 2024, 1, 'Return');
INSERT INTO SourceTask (SourceID, TypeID, Description) VALUES (10, 6, 'Sign'), (10, 7, 'Send');
INSERT INTO ClientEnquiry (lID, lClientID, nYear, strDescription, dtStart, dtDue, dtReceived) VALUES (1, 1, 2024, 'P60', '2024-02-01', '2024-02-29', NULL), (2, 1, 2024, 'Books', '2024-01-01', NULL, NULL),(3, 1, 2024, 'Answered', '2024-01-01', NULL, '2024-02-01'), (4, 1, 2023, 'Old', '2023-01-01', NULL, NULL);
