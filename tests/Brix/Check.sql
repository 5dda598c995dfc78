-- A practice that fits together.
INSERT INTO BRIXClient (lID, strName, dtDeath) VALUES (1, 'Ann', '2024-02-29'), (2, 'Bob', NULL);
INSERT INTO BRIXPartnership (lID) VALUES (1);
INSERT INTO BRIXTaxForm (lID, lClientID, nYear) VALUES (1, 1, 2024), (2, 1, 2025), (3, 2, 2024);
INSERT INTO BRIXNewEmploy (lID, lTaxFormID, lClientID, nYear, amtPay) VALUES (1, 1, 1, 2024, 123400);
INSERT INTO BRIXBTaxProprietor (lID, lClientID, lpClientID) VALUES (1, 1, NULL), (2, 0, 1);
INSERT INTO BRIXMTD_TaxYear (lID, lClientID, nYear, dtFetched) VALUES (1, 1, 2024, '2025-01-31 10:00:00.000'), (2, 1, 2025, '2025-01-31');
INSERT INTO BRIXMTD_Employments (lID, lMTD_TaxYearID, strKey) VALUES (1, 1, 'A1'), (2, 1, 'a1'), (3, 2, 'A1'), (4, 1, NULL), (5, 1, NULL);
INSERT INTO BRIXUser (lID, strUserID) VALUES (1, 'Ann');
INSERT INTO BRIXUserPermissions (lID, strUserID, nPermission, bAllowed) VALUES (1, 'ANN', 87, 1);
INSERT INTO Source (SourceID, ClientID, Year, SourceTypeID) VALUES (9, 1, 2024, 1);
INSERT INTO SourceTask (SourceID, TypeID, DueDate) VALUES (9, 1, '2024-01-31T00:00:00');
INSERT INTO BRIXOptions (lID) VALUES (1);
