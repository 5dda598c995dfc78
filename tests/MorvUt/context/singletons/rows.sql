-- What ClientSingletonTest begins with.
INSERT INTO BRIXClient (lID) VALUES (1), (2);
INSERT INTO BRIXPartnership (lID) VALUES (1), (5);
INSERT INTO BRIXTaxForm (lID, lClientID, nYear) VALUES (10, 1, 2024), (11, 1, 2023), (12, 2, 2024), (13, 1, 2024);
INSERT INTO BRIXPartnershipTaxForm (lID, lpClientID, nYear) VALUES (20, 1, 2024);
INSERT INTO BRIXMinisters (lID, lTaxFormID, lClientID, nYear) VALUES (30, 10, 1, 2024);
INSERT INTO BRIXNewEmploy (lID, lTaxFormID, lClientID, nYear, strGUID, nOrdering, nP11D) VALUES (40, 10, 1, 2024, 'A', 2, 1), (42, 12, 2, 2024, 'X', 1, 1);
INSERT INTO BRIXFBISubmissions (lID, lClientID, nYear) VALUES (50, 1, 2024), (52, 2, 2024);
INSERT INTO BRIXPartnershipFBISubmissions (lID, lpClientID, nYear) VALUES (60, 1, 2024), (61, 5, 2024);
INSERT INTO BRIXPartnershipClients (lID, lClientID, lpClientID) VALUES (70, 1, 5);
