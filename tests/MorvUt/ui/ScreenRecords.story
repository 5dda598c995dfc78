# What screens read of the practice: countries, banks, those among whom an amount is split.

== Countries are those of the year with the rates of their day
Sql INSERT INTO BRIXCountry (lID, strName, strAbbr, strCurrency, strCurrencyAbbr, bEU, dtEUStart, nFirstYear, nLastYear) VALUES (1, 'Jersey', 'JEY', 'Pound', 'GBP', 0, NULL, NULL, NULL), (2, 'France', 'FRA', 'Euro', 'EUR', 1, '1958-01-01', NULL, NULL), (3, 'Croatia', 'HRV', 'Kuna', 'HRK', 1, NULL, NULL, 2023), (4, 'Croatia', 'HRV', 'Euro', 'EUR', 1, NULL, 2024, NULL), (5, 'Åland', 'ALA', 'Euro', 'EUR', 1, NULL, 2006, 2007), (6, 'France', 'FRX', 'Franc', 'FRF', 0, NULL, NULL, NULL)
Sql INSERT INTO BRIXDTARate (lID, lCountryID, dtEffective, dblDividend, dblInterest, dblRoyalty) VALUES (1, 2, '2010-04-06', 15, 0, 5), (2, 2, '2007-04-05', 20, 10, 2.5), (3, 2, '2007-04-06', 17, 10, 2.5), (4, 2, NULL, 1, 1, 1), (5, 3, '1990-01-01', 12, 10, 10)
In 2004
Abbreviation ALA: 0
Name in any case åLAND: 0
In the next year, too: ALA: 0
In the next year, too: Åland: 0
# before its first year
In 2005
Abbreviation ALA: 0
Name in any case åLAND: 0
In the next year, too: ALA: 1
In the next year, too: Åland: 1
# its first
In 2006
Abbreviation ALA: 1
Name in any case åLAND: 1
In the next year, too: ALA: 1
In the next year, too: Åland: 1
# its last
In 2007
Abbreviation ALA: 1
Name in any case åLAND: 1
In the next year, too: ALA: 0
In the next year, too: Åland: 0
# one of two years
In 2023
Data in any case of CROATIA
    HRV, Kuna, HRK, .., EU
In 2024
Data in any case of CROATIA
    HRV, Euro, EUR, .., EU
Currency in any case HRK: 0
Currency in any case gbp: 1
Countries
    Unassigned
    Croatia
    France
    France
    Jersey
# the first of two
Data of France
    FRA, Euro, EUR, 1958-01-01.., EU
Abbreviation JEY: 1
Abbreviation JSY: 1
Abbreviation jsy: 1
Abbreviation : 1
Abbreviation null: 1
Abbreviation jey: 0
Name FRANCE: 0
Name of the EU Jersey: 0
Name of the EU in any case fRANCE: 1
In the next year, too: Unassigned: 0
In the next year, too: : 0
# none before 2007
In 2006
Rates of FRA on 5/4/2007: 100, 100, 100
Sets of rates of FRA: 0
# before the first; then that of the year's last day, since a later year's is not known
In 2007
Rates of FRA on 4/4/2007: 100, 100, 100
Rates of FRA on 6/4/2010: 20, 10, 2.5
Rates of FRA: 20, 10, 2.5
Sets of rates of FRA: 1
# a day is a whole one; no date is the year's last day
In 2024
Rates of FRA on 1/1/2009: 17, 10, 2.5
Rates of FRA on 5/4/2010: 17, 10, 2.5
Rates of FRA on x: 15, 0, 5
Sets of rates of FRA: 3
# the other year's row has them
Rates of HRV: 100, 100, 100
Sets of rates of HRV: 0
# no such country
Rates of XXX: -1, -1, -1
Sets of rates of XXX: -1

== Entities and banks are in order
Sql INSERT INTO BRIXClient (lID, strName) VALUES (1, 'Zoe'), (2, 'adam'), (3, 'Bert'), (4, 'Zoe')
Sql INSERT INTO BRIXPartnership (lID, strName) VALUES (1, 'Oak'), (2, 'ash')
Sql INSERT INTO BRIXPartnershipClients (lID, lClientID, lpClientID) VALUES (1, 4, 1), (2, 1, 1), (3, 2, 1), (4, 3, 1), (5, 2, 1), (6, 99, 1), (7, 1, 2)
Sql INSERT INTO BRIXJointIncomeSourceTaxYear (lID, lClientID, lSpouseID) VALUES (1, 1, 2), (2, 3, 99)
Sql INSERT INTO BRIXBank (lID, strName) VALUES (1, 'Northern'), (2, NULL), (3, 'abbey')
# each once, by name, one without a record left out; of one name by their ids
Partnership 1
    2 adam
    3 Bert
    1 Zoe
    4 Zoe
Client 1
    1 Zoe
    2 ash
    1 Oak
# the client first
Joint source 1
    1 Zoe
    2 adam
Joint source 2
    3 Bert
Joint source 3
Banks
    abbey
    Northern

== Countries are read in two statements until something changes
Sql INSERT INTO BRIXCountry (lID, strAbbr) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) SELECT i, CAST(i AS VARCHAR(9)) FROM n
Sql INSERT INTO BRIXDTARate (lID, lCountryID, dtEffective, dblDividend) WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 1799) SELECT i + 1, i % 300 + 1, '2000-01-01', i / 300 FROM n
Sql INSERT INTO BRIXDTARate (lID, lCountryID, dtEffective, dblDividend) WITH RECURSIVE n(i) AS (SELECT 1800 UNION ALL SELECT i + 1 FROM n WHERE i < 1999) SELECT i + 1, i % 300 + 1, '2006-01-01', i / 300 FROM n
Statements sent ...
Rates of 7: 6, 0, 0
Statements sent 2
Rates of 7: 6, 0, 0
Statements sent 0
# another year
In 2023
Rates of 7: 6, 0, 0
Statements sent 2
# the last one of country 7
The dividend of rate 1807: 2.5
Statements sent ...
Rates of 7: 2.5, 0, 0
Statements sent 2
Rates while it is deleted, of 7: -1, -1, -1
Rates of 7: 2.5, 0, 0
No practice is open
Countries
    Unassigned
