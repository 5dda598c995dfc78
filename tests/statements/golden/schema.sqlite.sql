CREATE TABLE [BRIXClient] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strCode] TEXT COLLATE NOCASE,
    [strName] TEXT COLLATE NOCASE,
    [strUTR] TEXT COLLATE NOCASE,
    [strNINumber] TEXT COLLATE NOCASE,
    [bTrust] INTEGER DEFAULT 0,
    [bActive] INTEGER DEFAULT 1,
    [dtDeath] TEXT,
    [strEntityType] TEXT COLLATE NOCASE,
    [bTrustOption] INTEGER DEFAULT 0,
    [nTrustKind] INTEGER,
    [bNoTaxReturnSource] INTEGER DEFAULT 0,
    [dtModified] TEXT,
    [strModifiedBy] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [BRIXPartnership] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strCode] TEXT COLLATE NOCASE,
    [strName] TEXT COLLATE NOCASE,
    [strUTR] TEXT COLLATE NOCASE,
    [bActive] INTEGER DEFAULT 1,
    [dtCessation] TEXT,
    [bLLP] INTEGER DEFAULT 0,
    [dtModified] TEXT,
    [strModifiedBy] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [BRIXTaxForm] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [dtClientReview] TEXT,
    [dtFinalised] TEXT,
    [bDormant] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXTaxForm_lClientID] ON [BRIXTaxForm] ([lClientID]);
CREATE TABLE [BRIXPartnershipTaxForm] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lpClientID] INTEGER,
    [nYear] INTEGER,
    [bDormant] INTEGER DEFAULT 0,
    [dtClientReview] TEXT,
    [dtFinalised] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipTaxForm_lpClientID] ON [BRIXPartnershipTaxForm] ([lpClientID]);
CREATE TABLE [BRIXClientPeriodsInactivity] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lClientID] INTEGER,
    [dtStart] TEXT,
    [dtEnd] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXClientPeriodsInactivity_lClientID] ON [BRIXClientPeriodsInactivity] ([lClientID]);
CREATE TABLE [BRIXPartnershipPeriodsInactivity] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lpClientID] INTEGER,
    [dtStart] TEXT,
    [dtEnd] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipPeriodsInactivity_lpClientID] ON [BRIXPartnershipPeriodsInactivity] ([lpClientID]);
CREATE TABLE [BRIXClientYearly] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [nStatus] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXClientYearly_lClientID] ON [BRIXClientYearly] ([lClientID]);
CREATE TABLE [BRIXPartnershipYearly] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lpClientID] INTEGER,
    [nYear] INTEGER,
    [nStatus] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipYearly_lpClientID] ON [BRIXPartnershipYearly] ([lpClientID]);
CREATE TABLE [BRIXOtherReturnInfo] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [nTaxPayerStatus] INTEGER,
    [bTradingAllowance] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXOtherReturnInfo_lTaxFormID] ON [BRIXOtherReturnInfo] ([lTaxFormID]);
CREATE TABLE [BRIXPFile] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [nValue] INTEGER,
    [nYear] INTEGER,
    [amtTurnoverSole] INTEGER,
    [amtTurnoverSoleOld] INTEGER,
    [amtTurnoverPartnership] INTEGER,
    [amtTurnoverPartnershipOld] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [BRIXOptions] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [nPAYEInterface] INTEGER,
    [nDebugLogging] INTEGER,
    [bHMRCRetrieval] INTEGER DEFAULT 0,
    [bCFStaff] INTEGER DEFAULT 0,
    [nDateFormat] INTEGER,
    [nHMRCLogDays] INTEGER DEFAULT 730,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [BRIXUser] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strUserID] TEXT COLLATE NOCASE,
    [strFullName] TEXT COLLATE NOCASE,
    [bListed] INTEGER DEFAULT 1,
    [strRole] TEXT COLLATE NOCASE,
    [strEmail] TEXT COLLATE NOCASE,
    [strTelephone] TEXT COLLATE NOCASE,
    [strFBIUserName] TEXT COLLATE NOCASE,
    [vbFBIPassword] BLOB,
    [bRememberFBIPassword] INTEGER DEFAULT 0,
    [bFBISendImmediately] INTEGER DEFAULT 0,
    [strGatewayID] TEXT COLLATE NOCASE,
    [strTallywickUserName] TEXT COLLATE NOCASE,
    [vbTallywickPassword] BLOB,
    [nUserValue] INTEGER,
    [strPasswordHash] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [BRIXGroup] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strName] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [BRIXGroupUser] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strUserID] TEXT COLLATE NOCASE,
    [lGroupID] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXGroupUser_strUserID] ON [BRIXGroupUser] ([strUserID]);
CREATE INDEX [IX_BRIXGroupUser_lGroupID] ON [BRIXGroupUser] ([lGroupID]);
CREATE TABLE [BRIXUserRole] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strRole] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [BRIXUserRolePermissions] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strRole] TEXT COLLATE NOCASE,
    [nPermission] INTEGER,
    [bAllowed] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXUserRolePermissions_strRole] ON [BRIXUserRolePermissions] ([strRole]);
CREATE TABLE [BRIXUserPermissions] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strUserID] TEXT COLLATE NOCASE,
    [nPermission] INTEGER,
    [bAllowed] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXUserPermissions_strUserID] ON [BRIXUserPermissions] ([strUserID]);
CREATE TABLE [BRIXMinisters] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [strName] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXMinisters_lTaxFormID] ON [BRIXMinisters] ([lTaxFormID]);
CREATE TABLE [BRIXCalculatedBenefits] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [nType] INTEGER,
    [lMinisterID] INTEGER,
    [amtBenefit] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXCalculatedBenefits_lMinisterID] ON [BRIXCalculatedBenefits] ([lMinisterID]);
CREATE TABLE [BRIXNewEmploy] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [strGUID] TEXT COLLATE NOCASE,
    [nOrdering] INTEGER,
    [strEmployerName] TEXT COLLATE NOCASE,
    [strPAYEReference] TEXT COLLATE NOCASE,
    [strWorksNumber] TEXT COLLATE NOCASE,
    [dtStart] TEXT,
    [dtEnd] TEXT,
    [amtPay] INTEGER,
    [amtTax] INTEGER,
    [amtStudentLoan] INTEGER,
    [bFromHMRC] INTEGER DEFAULT 0,
    [strNotesAudit] TEXT COLLATE NOCASE,
    [strNotesReturn] TEXT COLLATE NOCASE,
    [strNotesEstimate] TEXT COLLATE NOCASE,
    [strNotesAvoidance] TEXT COLLATE NOCASE,
    [strSchemeReference] TEXT COLLATE NOCASE,
    [nSchemeYear] INTEGER,
    [bCompleted] INTEGER DEFAULT 0,
    [nP11D] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXNewEmploy_lTaxFormID] ON [BRIXNewEmploy] ([lTaxFormID]);
CREATE TABLE [BRIXNewEmployBenefits] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lNewEmployID] INTEGER,
    [nType] INTEGER,
    [amtBenefit] INTEGER,
    [bEstimate] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXNewEmployBenefits_lNewEmployID] ON [BRIXNewEmployBenefits] ([lNewEmployID]);
CREATE TABLE [BRIXPensionStateBenefits] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [nSection] INTEGER,
    [nType] INTEGER,
    [strDescription] TEXT COLLATE NOCASE,
    [strReference] TEXT COLLATE NOCASE,
    [strPayer] TEXT COLLATE NOCASE,
    [dtStart] TEXT,
    [amtAmount] INTEGER,
    [amtTax] INTEGER,
    [bEstimate] INTEGER DEFAULT 0,
    [strWorksNumber] TEXT COLLATE NOCASE,
    [nOrdering] INTEGER,
    [bFromHMRC] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPensionStateBenefits_lTaxFormID] ON [BRIXPensionStateBenefits] ([lTaxFormID]);
CREATE TABLE [BRIXPSBDetails] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lPensionStateBenefitsID] INTEGER,
    [dtPaid] TEXT,
    [amtAmount] INTEGER,
    [amtTax] INTEGER,
    [nOrdering] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPSBDetails_lPensionStateBenefitsID] ON [BRIXPSBDetails] ([lPensionStateBenefitsID]);
CREATE TABLE [BRIXBTaxProprietor] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lClientID] INTEGER,
    [lpClientID] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXBTaxProprietor_lClientID] ON [BRIXBTaxProprietor] ([lClientID]);
CREATE INDEX [IX_BRIXBTaxProprietor_lpClientID] ON [BRIXBTaxProprietor] ([lpClientID]);
CREATE TABLE [BRIXPartnershipClients] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lClientID] INTEGER,
    [lpClientID] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipClients_lClientID] ON [BRIXPartnershipClients] ([lClientID]);
CREATE INDEX [IX_BRIXPartnershipClients_lpClientID] ON [BRIXPartnershipClients] ([lpClientID]);
CREATE TABLE [BRIXFBISubmissions] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [nYear] INTEGER,
    [lClientID] INTEGER,
    [nStatus] INTEGER,
    [dtSubmitted] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXFBISubmissions_lClientID] ON [BRIXFBISubmissions] ([lClientID]);
CREATE TABLE [BRIXPartnershipFBISubmissions] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lpClientID] INTEGER,
    [nStatus] INTEGER,
    [nYear] INTEGER,
    [dtSubmitted] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipFBISubmissions_lpClientID] ON [BRIXPartnershipFBISubmissions] ([lpClientID]);
CREATE TABLE [BRIXNewInterest] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [lJointIncomeSourceTaxYearID] INTEGER,
    [strName] TEXT COLLATE NOCASE,
    [nFlagA] INTEGER,
    [nFlagB] INTEGER,
    [nType] INTEGER,
    [amtIncome] INTEGER,
    [amtBFWD] INTEGER,
    [amtAddition] INTEGER,
    [amtDeduction] INTEGER,
    [strNotesAudit] TEXT COLLATE NOCASE,
    [strNotesReturn] TEXT COLLATE NOCASE,
    [strNotesEstimate] TEXT COLLATE NOCASE,
    [strNotesAvoidance] TEXT COLLATE NOCASE,
    [nOrdering] INTEGER,
    [strSchemeReference] TEXT COLLATE NOCASE,
    [nSchemeYear] INTEGER,
    [bCompleted] INTEGER DEFAULT 0,
    [bJoint] INTEGER DEFAULT 0,
    [dblClientShare] REAL,
    [nJointView] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterest_lTaxFormID] ON [BRIXNewInterest] ([lTaxFormID]);
CREATE INDEX [IX_BRIXNewInterest_lJointIncomeSourceTaxYearID] ON [BRIXNewInterest] ([lJointIncomeSourceTaxYearID]);
CREATE TABLE [BRIXNewInterestGrid] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lNewInterestID] INTEGER,
    [dtPaid] TEXT,
    [amtIncome] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterestGrid_lNewInterestID] ON [BRIXNewInterestGrid] ([lNewInterestID]);
CREATE TABLE [BRIXNewInterestJoint] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lNewInterestID] INTEGER,
    [amtIncome] INTEGER,
    [amtBFWD] INTEGER,
    [amtAddition] INTEGER,
    [amtDeduction] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterestJoint_lNewInterestID] ON [BRIXNewInterestJoint] ([lNewInterestID]);
CREATE TABLE [BRIXNewInterestJointGrid] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lNewInterestJointID] INTEGER,
    [dtPaid] TEXT,
    [amtIncome] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterestJointGrid_lNewInterestJointID] ON [BRIXNewInterestJointGrid] ([lNewInterestJointID]);
CREATE TABLE [BRIXNewInterestPayment] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lNewInterestID] INTEGER,
    [nOrdering] INTEGER,
    [dtPaid] TEXT,
    [amtNet] INTEGER,
    [amtTax] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterestPayment_lNewInterestID] ON [BRIXNewInterestPayment] ([lNewInterestID]);
CREATE TABLE [BRIXNewInterestUT] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [strName] TEXT COLLATE NOCASE,
    [nOrdering] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterestUT_lTaxFormID] ON [BRIXNewInterestUT] ([lTaxFormID]);
CREATE TABLE [BRIXJointIncomeSourceTaxYear] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [lSpouseID] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXJointIncomeSourceTaxYear_lClientID] ON [BRIXJointIncomeSourceTaxYear] ([lClientID]);
CREATE TABLE [BRIXOtherForeignIncome] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [strName] TEXT COLLATE NOCASE,
    [nFlagA] INTEGER,
    [nFlagB] INTEGER,
    [amtBFWD] INTEGER,
    [amtAddition] INTEGER,
    [amtDeduction] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXOtherForeignIncome_lTaxFormID] ON [BRIXOtherForeignIncome] ([lTaxFormID]);
CREATE TABLE [BRIXOtherForeignIncomeGrid] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lOtherForeignIncomeID] INTEGER,
    [amtIncome] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXOtherForeignIncomeGrid_lOtherForeignIncomeID] ON [BRIXOtherForeignIncomeGrid] ([lOtherForeignIncomeID]);
CREATE TABLE [BRIXPartnershipAccruedIncome] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [lpClientID] INTEGER,
    [strName] TEXT COLLATE NOCASE,
    [nKind] INTEGER,
    [amtBFWD] INTEGER,
    [amtAddition] INTEGER,
    [amtDeduction] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipAccruedIncome_lTaxFormID] ON [BRIXPartnershipAccruedIncome] ([lTaxFormID]);
CREATE TABLE [BRIXBTaxAccountingPeriod] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lBTaxProprietorID] INTEGER,
    [dtStart] TEXT,
    [dtEnd] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXBTaxAccountingPeriod_lBTaxProprietorID] ON [BRIXBTaxAccountingPeriod] ([lBTaxProprietorID]);
CREATE TABLE [BRIXBTaxNoTaxInvestmentIncome] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lBTaxAccountingPeriodID] INTEGER,
    [nType] INTEGER,
    [amtAmount] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXBTaxNoTaxInvestmentIncome_lBTaxAccountingPeriodID] ON [BRIXBTaxNoTaxInvestmentIncome] ([lBTaxAccountingPeriodID]);
CREATE TABLE [BRIXBTaxNoTaxInvestmentIncomeSplit] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lBTaxNoTaxInvestmentIncomeID] INTEGER,
    [lClientID] INTEGER,
    [amtShare] INTEGER,
    [amtShareOverride] INTEGER,
    [bOverride] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXBTaxNoTaxInvestmentIncomeSplit_lBTaxNoTaxInvestmentIncomeID] ON [BRIXBTaxNoTaxInvestmentIncomeSplit] ([lBTaxNoTaxInvestmentIncomeID]);
CREATE TABLE [BRIXCGT] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXCGT_lTaxFormID] ON [BRIXCGT] ([lTaxFormID]);
CREATE TABLE [BRIXCGTAcq] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [nOrdering] INTEGER,
    [lCGTID] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXCGTAcq_lCGTID] ON [BRIXCGTAcq] ([lCGTID]);
CREATE TABLE [BRIXEmployUKIncome] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lNewEmployID] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXEmployUKIncome_lNewEmployID] ON [BRIXEmployUKIncome] ([lNewEmployID]);
CREATE TABLE [BRIXEmployUKIncomeDetails] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lEmployUKIncomeID] INTEGER,
    [nOrdering] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXEmployUKIncomeDetails_lEmployUKIncomeID] ON [BRIXEmployUKIncomeDetails] ([lEmployUKIncomeID]);
CREATE TABLE [BRIXOtherOut] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [nOrdering] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXOtherOut_lTaxFormID] ON [BRIXOtherOut] ([lTaxFormID]);
CREATE TABLE [BRIXPlan] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [nOrdering] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPlan_lTaxFormID] ON [BRIXPlan] ([lTaxFormID]);
CREATE TABLE [BRIXPlanPayment] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [nOrdering] INTEGER,
    [lPlanID] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPlanPayment_lPlanID] ON [BRIXPlanPayment] ([lPlanID]);
CREATE TABLE [BRIXPropUK] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [nOrdering] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXPropUK_lTaxFormID] ON [BRIXPropUK] ([lTaxFormID]);
CREATE TABLE [BRIXChild] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strName] TEXT COLLATE NOCASE,
    [dtBirth] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [BRIXChildParentLink] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lChildID] INTEGER,
    [lClientID] INTEGER,
    [dtStart] TEXT,
    [dtEnd] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXChildParentLink_lChildID] ON [BRIXChildParentLink] ([lChildID]);
CREATE TABLE [BRIXChildOtherParentLink] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lChildID] INTEGER,
    [strName] TEXT COLLATE NOCASE,
    [dtStart] TEXT,
    [dtEnd] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXChildOtherParentLink_lChildID] ON [BRIXChildOtherParentLink] ([lChildID]);
CREATE TABLE [BRIXChildSchedule] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [lChildID] INTEGER,
    [nAllowance] INTEGER,
    [nAllowanceInYear] INTEGER,
    [bShared] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXChildSchedule_lTaxFormID] ON [BRIXChildSchedule] ([lTaxFormID]);
CREATE TABLE [BRIXMTD_TaxYear] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [dtFetched] TEXT,
    [dtComplete] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_TaxYear_lClientID] ON [BRIXMTD_TaxYear] ([lClientID]);
CREATE TABLE [BRIXMTD_Employments] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strKey] TEXT COLLATE NOCASE,
    [lMTD_TaxYearID] INTEGER,
    [strEmployerName] TEXT COLLATE NOCASE,
    [strPAYEReference] TEXT COLLATE NOCASE,
    [strWorksNumber] TEXT COLLATE NOCASE,
    [dtStart] TEXT,
    [dtEnd] TEXT,
    [amtPay] INTEGER,
    [amtTax] INTEGER,
    [amtStudentLoan] INTEGER,
    [bWithdrawn] INTEGER DEFAULT 0,
    [bOffPayroll] INTEGER DEFAULT 0,
    [nDecision] INTEGER,
    [strDecided] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_Employments_lMTD_TaxYearID] ON [BRIXMTD_Employments] ([lMTD_TaxYearID]);
CREATE TABLE [BRIXMTD_EmploymentsCompanyBenefits] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lMTD_EmploymentsID] INTEGER,
    [nBenefitType] INTEGER,
    [strBenefitType] TEXT COLLATE NOCASE,
    [amtAmount] INTEGER,
    [bForecast] INTEGER DEFAULT 0,
    [bWithdrawn] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_EmploymentsCompanyBenefits_lMTD_EmploymentsID] ON [BRIXMTD_EmploymentsCompanyBenefits] ([lMTD_EmploymentsID]);
CREATE TABLE [BRIXMTD_PensionStateBenefits] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lMTD_TaxYearID] INTEGER,
    [nMTDType] INTEGER,
    [dtStart] TEXT,
    [strReference] TEXT COLLATE NOCASE,
    [strPayer] TEXT COLLATE NOCASE,
    [amtAmount] INTEGER,
    [amtTax] INTEGER,
    [bWithdrawn] INTEGER DEFAULT 0,
    [strWorksNumber] TEXT COLLATE NOCASE,
    [nDecision] INTEGER,
    [strDecided] TEXT COLLATE NOCASE,
    [dtEnd] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_PensionStateBenefits_lMTD_TaxYearID] ON [BRIXMTD_PensionStateBenefits] ([lMTD_TaxYearID]);
CREATE TABLE [BRIXMTD_TaxFreeAllowances] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lMTD_TaxYearID] INTEGER,
    [strAllowanceType] TEXT COLLATE NOCASE,
    [amtAmount] INTEGER,
    [nAllowanceType] INTEGER,
    [bWithdrawn] INTEGER DEFAULT 0,
    [nDecision] INTEGER,
    [strDecided] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_TaxFreeAllowances_lMTD_TaxYearID] ON [BRIXMTD_TaxFreeAllowances] ([lMTD_TaxYearID]);
CREATE TABLE [BRIXMTD_NIC] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lMTD_TaxYearID] INTEGER,
    [amtClass1Earnings] INTEGER,
    [amtClass2Due] INTEGER,
    [dtUpdated] TEXT,
    [bMaxNICsReached] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_NIC_lMTD_TaxYearID] ON [BRIXMTD_NIC] ([lMTD_TaxYearID]);
CREATE TABLE [BRIXCountry] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strName] TEXT COLLATE NOCASE,
    [strAbbr] TEXT COLLATE NOCASE,
    [strCurrency] TEXT COLLATE NOCASE,
    [strCurrencyAbbr] TEXT COLLATE NOCASE,
    [bEU] INTEGER DEFAULT 0,
    [dtEUStart] TEXT,
    [dtEUEnd] TEXT,
    [nFirstYear] INTEGER,
    [nLastYear] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [BRIXDTARate] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lCountryID] INTEGER,
    [dtEffective] TEXT,
    [dblDividend] REAL,
    [dblInterest] REAL,
    [dblRoyalty] REAL,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXDTARate_lCountryID] ON [BRIXDTARate] ([lCountryID]);
CREATE TABLE [BRIXBank] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strName] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [ClientEnquiry] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lClientID] INTEGER,
    [lpClientID] INTEGER,
    [nYear] INTEGER,
    [strDescription] TEXT COLLATE NOCASE,
    [bCarryForward] INTEGER DEFAULT 0,
    [SourceID] INTEGER,
    [SourceTypeID] INTEGER,
    [TypeID] INTEGER,
    [dtStart] TEXT,
    [dtDue] TEXT,
    [dtReminder] TEXT,
    [dtReceived] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_ClientEnquiry_lClientID] ON [ClientEnquiry] ([lClientID]);
CREATE INDEX [IX_ClientEnquiry_lpClientID] ON [ClientEnquiry] ([lpClientID]);
CREATE TABLE [BRIXClientEnquirySettings] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strUserID] TEXT COLLATE NOCASE,
    [bHideCompleted] INTEGER DEFAULT 0,
    [bAllYears] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [Source] (
    [SourceID] INTEGER NOT NULL PRIMARY KEY,
    [ClientID] INTEGER,
    [pClientID] INTEGER,
    [Year] INTEGER,
    [SourceTypeID] INTEGER,
    [Status] TEXT COLLATE NOCASE,
    [ShowReminder] INTEGER DEFAULT 0,
    [Description] TEXT COLLATE NOCASE,
    [bUserCreated] INTEGER DEFAULT 0,
    [strDefaultTrackerGUID] TEXT COLLATE NOCASE,
    [bCFStaff] INTEGER DEFAULT 0,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_Source_ClientID] ON [Source] ([ClientID]);
CREATE INDEX [IX_Source_pClientID] ON [Source] ([pClientID]);
CREATE TABLE [SourceType] (
    [SourceTypeID] INTEGER NOT NULL PRIMARY KEY,
    [ShowReminder] INTEGER DEFAULT 0,
    [Description] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [SourceTask] (
    [SourceID] INTEGER NOT NULL,
    [TypeID] INTEGER NOT NULL,
    [ListOrder] INTEGER,
    [DueDate] TEXT,
    [ReminderDate] TEXT,
    [bRequired] INTEGER DEFAULT 1,
    [bComplete] INTEGER DEFAULT 0,
    [strAssignedTo] TEXT COLLATE NOCASE,
    [Description] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0,
    PRIMARY KEY ([SourceID], [TypeID])
);
CREATE INDEX [IX_SourceTask_SourceID] ON [SourceTask] ([SourceID]);
CREATE TABLE [SourceDefaultTask] (
    [SourceTypeID] INTEGER,
    [TypeID] INTEGER,
    [DefaultTrackerID] INTEGER,
    [ListOrder] INTEGER,
    [DueDate] TEXT,
    [ReminderDate] TEXT,
    [nVersion] INTEGER DEFAULT 0
);
CREATE UNIQUE INDEX [UX_SourceDefaultTask_SourceTypeID_TypeID_DefaultTrackerID] ON [SourceDefaultTask] ([SourceTypeID], [TypeID], [DefaultTrackerID]);
CREATE INDEX [IX_SourceDefaultTask_SourceTypeID] ON [SourceDefaultTask] ([SourceTypeID]);
CREATE TABLE [SourceTaskTypeRef] (
    [TypeID] INTEGER NOT NULL PRIMARY KEY,
    [default] INTEGER DEFAULT 0,
    [Description] TEXT COLLATE NOCASE,
    [nVersion] INTEGER DEFAULT 0
);
CREATE TABLE [BRIXForeignDividend] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [nOrdering] INTEGER,
    [strCompany] TEXT COLLATE NOCASE,
    [strCountryAbbr] TEXT COLLATE NOCASE,
    [dtPaid] TEXT,
    [amtNet] INTEGER,
    [amtForeignTax] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXForeignDividend_lTaxFormID] ON [BRIXForeignDividend] ([lTaxFormID]);
CREATE TABLE [BRIXChangeOfBasis] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lTaxFormID] INTEGER,
    [lClientID] INTEGER,
    [nYear] INTEGER,
    [nColumn] INTEGER,
    [amtRow0] INTEGER,
    [amtRow1] INTEGER,
    [amtRow2] INTEGER,
    [amtRow3] INTEGER,
    [nVersion] INTEGER DEFAULT 0
);
CREATE INDEX [IX_BRIXChangeOfBasis_lTaxFormID] ON [BRIXChangeOfBasis] ([lTaxFormID]);
CREATE TABLE [MTDAuthorisation] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strGatewayID] TEXT COLLATE NOCASE,
    [nAuthorisedStatus] INTEGER DEFAULT 0,
    [vbAccessToken] BLOB,
    [vbRefreshToken] BLOB,
    [nExpiresIn] INTEGER,
    [strScope] TEXT COLLATE NOCASE,
    [strTokenType] TEXT COLLATE NOCASE,
    [dtAuthenticated] TEXT,
    [dtGranted] TEXT,
    [strService] TEXT COLLATE NOCASE,
    [vbRoom] BLOB
);
CREATE UNIQUE INDEX [UX_MTDAuthorisation_strGatewayID] ON [MTDAuthorisation] ([strGatewayID]);
CREATE TABLE [MTDAuthorisationLock] (
    [lMTDAuthorisationID] INTEGER NOT NULL PRIMARY KEY,
    [strUserID] TEXT COLLATE NOCASE,
    [strWorkstation] TEXT COLLATE NOCASE,
    [dtLocked] TEXT DEFAULT (strftime('%Y-%m-%d %H:%M:%f','now')),
    [ConnectionID] INTEGER DEFAULT (sqlite_compileoption_used('CELLAR_SESSION'))
);
CREATE TABLE [MTDLog] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [strUserID] TEXT COLLATE NOCASE,
    [strWorkstation] TEXT COLLATE NOCASE,
    [strSessionID] TEXT COLLATE NOCASE,
    [strChainID] TEXT COLLATE NOCASE,
    [strEvent] TEXT COLLATE NOCASE,
    [strInterface] TEXT COLLATE NOCASE,
    [strRequest] TEXT COLLATE NOCASE,
    [strResponse] TEXT COLLATE NOCASE,
    [strDetail] TEXT COLLATE NOCASE,
    [dtLogged] TEXT DEFAULT (strftime('%Y-%m-%d %H:%M:%f','now','localtime'))
);
CREATE TABLE [MTDPace] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [dtNext] TEXT
);
CREATE TABLE [MTDFetchRun] (
    [lYear] INTEGER NOT NULL PRIMARY KEY,
    [dtBegan] TEXT
);
CREATE TABLE [MorvUserLocks] (
    [UserId] TEXT COLLATE NOCASE,
    [ConnectionID] INTEGER DEFAULT (sqlite_compileoption_used('CELLAR_SESSION')),
    [dtLocked] TEXT DEFAULT (strftime('%Y-%m-%d %H:%M:%f','now','localtime')),
    [strWorkstation] TEXT COLLATE NOCASE
);
CREATE TABLE [BTaxUserLocks] (
    [UserId] TEXT COLLATE NOCASE,
    [ConnectionID] INTEGER DEFAULT (sqlite_compileoption_used('CELLAR_SESSION')),
    [dtLocked] TEXT DEFAULT (strftime('%Y-%m-%d %H:%M:%f','now','localtime')),
    [strWorkstation] TEXT COLLATE NOCASE
);
CREATE TABLE [TrustTaxUserLocks] (
    [UserId] TEXT COLLATE NOCASE,
    [ConnectionID] INTEGER DEFAULT (sqlite_compileoption_used('CELLAR_SESSION')),
    [dtLocked] TEXT DEFAULT (strftime('%Y-%m-%d %H:%M:%f','now','localtime')),
    [strWorkstation] TEXT COLLATE NOCASE
);
CREATE TABLE [FeatureLocks] (
    [nFeature] INTEGER NOT NULL PRIMARY KEY,
    [strUserID] TEXT COLLATE NOCASE,
    [strWorkstation] TEXT COLLATE NOCASE,
    [dtLocked] TEXT DEFAULT (strftime('%Y-%m-%d %H:%M:%f','now','localtime')),
    [ConnectionID] INTEGER DEFAULT (sqlite_compileoption_used('CELLAR_SESSION'))
);
CREATE TABLE [MTDAudit] (
    [lID] INTEGER NOT NULL PRIMARY KEY,
    [lClientID] INTEGER,
    [strAction] TEXT COLLATE NOCASE,
    [nYear] INTEGER,
    [strUserID] TEXT COLLATE NOCASE,
    [strItem] TEXT COLLATE NOCASE,
    [strHMRC] TEXT COLLATE NOCASE,
    [strReturn] TEXT COLLATE NOCASE,
    [dtWritten] TEXT DEFAULT (strftime('%Y-%m-%d %H:%M:%f','now','localtime'))
);
CREATE TABLE [BRIXSchema] (
    [nVersion] INTEGER DEFAULT 0,
    [vbKeyCheck] BLOB
);
CREATE TABLE [BRIXNextID] (
    [strTable] TEXT COLLATE NOCASE NOT NULL PRIMARY KEY,
    [lNext] INTEGER
);
CREATE VIEW MTDLogWrite AS SELECT [strUserID], [strWorkstation], [strSessionID], [strChainID], [strEvent], [strInterface], [strRequest], [strResponse], [strDetail] FROM [MTDLog];
CREATE TRIGGER MTDLogWriteInsert INSTEAD OF INSERT ON MTDLogWrite BEGIN
    INSERT INTO [MTDLog] ([strUserID], [strWorkstation], [strSessionID], [strChainID], [strEvent], [strInterface], [strRequest], [strResponse], [strDetail]) VALUES (NEW.[strUserID], NEW.[strWorkstation], NEW.[strSessionID], NEW.[strChainID], NEW.[strEvent], NEW.[strInterface], NEW.[strRequest], NEW.[strResponse], NEW.[strDetail]);
END;
