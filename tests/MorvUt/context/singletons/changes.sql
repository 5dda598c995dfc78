-- Changes of every field that the singleton reads.
UPDATE BRIXTaxForm SET dtClientReview = '2024-05-01';
UPDATE BRIXPartnershipTaxForm SET dtClientReview = '2024-05-01';
INSERT INTO BRIXMinisters (lID, lTaxFormID) VALUES (31, 10);
INSERT INTO BRIXCalculatedBenefits (lID, lMinisterID, nType) VALUES (35, 30, 50);
INSERT INTO BRIXNewEmploy (lTaxFormID, strGUID, nOrdering, nP11D) VALUES (10, 'b', 1, 0), (13, 'second', 1, 1);
INSERT INTO BRIXMinisters (lID, lTaxFormID) VALUES (29, 13);
INSERT INTO BRIXBTaxProprietor (lID, lpClientID) VALUES (80, 5);
INSERT INTO BRIXPartnershipClients (lClientID, lpClientID) VALUES (1, 1);
INSERT INTO BRIXFBISubmissions (lClientID, nYear, nStatus) VALUES (1, 2024, 2);
INSERT INTO BRIXPartnershipFBISubmissions (lpClientID, nYear, nStatus) VALUES (1, 2024, 2);
