-- Client 1 with a source of three tasks, partnership 1 with one of its own, and a source of nobody.
INSERT INTO BRIXClient (lID, strCode) VALUES (1, 'A');
INSERT INTO BRIXPartnership (lID) VALUES (1);
INSERT INTO Source (SourceID, ClientID, pClientID, Year, SourceTypeID, Description) VALUES (10, 1, NULL, 2024, 1, 'Return'),(11, NULL, 1, 2024, 3, 'SA800'), (12, 99, NULL, 2024, 1, 'of nobody');
INSERT INTO SourceTask (SourceID, TypeID, bRequired, bComplete) VALUES (10, 5, 1, 1), (10, 19, 0, 0), (11, 5, 1, 0);
INSERT INTO SourceTask (SourceID, TypeID, Description) VALUES (10, 6, 'Sign');
