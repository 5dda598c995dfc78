-- Makes a practice of one that an earlier version has made, with a lock table that held local time.
DROP TABLE BRIXMTD_NIC;
DROP TABLE MTDLog;
ALTER TABLE BRIXClient DROP COLUMN bNoTaxReturnSource;
ALTER TABLE FeatureLocks DROP COLUMN dtLocked;
DROP INDEX IX_BRIXPropUK_lTaxFormID;
ALTER TABLE BRIXPropUK DROP COLUMN lTaxFormID;
UPDATE BRIXSchema SET nVersion = 1;
ALTER TABLE BRIXSchema DROP COLUMN vbKeyCheck;
DROP TABLE MTDAuthorisationLock;
CREATE TABLE MTDAuthorisationLock (lMTDAuthorisationID {Int} PRIMARY KEY, strUserID {Text}, strWorkstation {Text}, dtLocked {DateTime} DEFAULT '2024-01-01', ConnectionID {Int});
