CREATE SEQUENCE BRIXClient_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXClient] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXClient_ids) PRIMARY KEY,
    [strCode] nvarchar(max),
    [strName] nvarchar(max),
    [strUTR] nvarchar(max),
    [strNINumber] nvarchar(max),
    [bTrust] bit DEFAULT 0,
    [bActive] bit DEFAULT 1,
    [dtDeath] date,
    [strEntityType] nvarchar(max),
    [bTrustOption] bit DEFAULT 0,
    [nTrustKind] int,
    [bNoTaxReturnSource] bit DEFAULT 0,
    [dtModified] datetime2(3),
    [strModifiedBy] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE BRIXPartnership_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPartnership] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPartnership_ids) PRIMARY KEY,
    [strCode] nvarchar(max),
    [strName] nvarchar(max),
    [strUTR] nvarchar(max),
    [bActive] bit DEFAULT 1,
    [dtCessation] date,
    [bLLP] bit DEFAULT 0,
    [dtModified] datetime2(3),
    [strModifiedBy] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE BRIXTaxForm_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXTaxForm] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXTaxForm_ids) PRIMARY KEY,
    [lClientID] int,
    [nYear] smallint,
    [dtClientReview] date,
    [dtFinalised] date,
    [bDormant] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXTaxForm_lClientID] ON [BRIXTaxForm] ([lClientID]);
CREATE SEQUENCE BRIXPartnershipTaxForm_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPartnershipTaxForm] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPartnershipTaxForm_ids) PRIMARY KEY,
    [lpClientID] int,
    [nYear] smallint,
    [bDormant] bit DEFAULT 0,
    [dtClientReview] date,
    [dtFinalised] date,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipTaxForm_lpClientID] ON [BRIXPartnershipTaxForm] ([lpClientID]);
CREATE SEQUENCE BRIXClientPeriodsInactivity_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXClientPeriodsInactivity] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXClientPeriodsInactivity_ids) PRIMARY KEY,
    [lClientID] int,
    [dtStart] date,
    [dtEnd] date,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXClientPeriodsInactivity_lClientID] ON [BRIXClientPeriodsInactivity] ([lClientID]);
CREATE SEQUENCE BRIXPartnershipPeriodsInactivity_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPartnershipPeriodsInactivity] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPartnershipPeriodsInactivity_ids) PRIMARY KEY,
    [lpClientID] int,
    [dtStart] date,
    [dtEnd] date,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipPeriodsInactivity_lpClientID] ON [BRIXPartnershipPeriodsInactivity] ([lpClientID]);
CREATE SEQUENCE BRIXClientYearly_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXClientYearly] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXClientYearly_ids) PRIMARY KEY,
    [lClientID] int,
    [nYear] smallint,
    [nStatus] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXClientYearly_lClientID] ON [BRIXClientYearly] ([lClientID]);
CREATE SEQUENCE BRIXPartnershipYearly_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPartnershipYearly] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPartnershipYearly_ids) PRIMARY KEY,
    [lpClientID] int,
    [nYear] smallint,
    [nStatus] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipYearly_lpClientID] ON [BRIXPartnershipYearly] ([lpClientID]);
CREATE SEQUENCE BRIXOtherReturnInfo_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXOtherReturnInfo] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXOtherReturnInfo_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [nTaxPayerStatus] int,
    [bTradingAllowance] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXOtherReturnInfo_lTaxFormID] ON [BRIXOtherReturnInfo] ([lTaxFormID]);
CREATE SEQUENCE BRIXPFile_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPFile] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPFile_ids) PRIMARY KEY,
    [nValue] int,
    [nYear] smallint,
    [amtTurnoverSole] money,
    [amtTurnoverSoleOld] money,
    [amtTurnoverPartnership] money,
    [amtTurnoverPartnershipOld] money,
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE BRIXOptions_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXOptions] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXOptions_ids) PRIMARY KEY,
    [nPAYEInterface] smallint,
    [nDebugLogging] int,
    [bHMRCRetrieval] bit DEFAULT 0,
    [bCFStaff] bit DEFAULT 0,
    [nDateFormat] int,
    [nHMRCLogDays] int DEFAULT 730,
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE BRIXUser_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXUser] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXUser_ids) PRIMARY KEY,
    [strUserID] nvarchar(max),
    [strFullName] nvarchar(max),
    [bListed] bit DEFAULT 1,
    [strRole] nvarchar(max),
    [strEmail] nvarchar(max),
    [strTelephone] nvarchar(max),
    [strFBIUserName] nvarchar(max),
    [vbFBIPassword] varbinary(max),
    [bRememberFBIPassword] bit DEFAULT 0,
    [bFBISendImmediately] bit DEFAULT 0,
    [strGatewayID] nvarchar(max),
    [strTallywickUserName] nvarchar(max),
    [vbTallywickPassword] varbinary(max),
    [nUserValue] int,
    [strPasswordHash] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE BRIXGroup_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXGroup] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXGroup_ids) PRIMARY KEY,
    [strName] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE BRIXGroupUser_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXGroupUser] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXGroupUser_ids) PRIMARY KEY,
    [strUserID] nvarchar(100),
    [lGroupID] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXGroupUser_strUserID] ON [BRIXGroupUser] ([strUserID]);
CREATE INDEX [IX_BRIXGroupUser_lGroupID] ON [BRIXGroupUser] ([lGroupID]);
CREATE SEQUENCE BRIXUserRole_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXUserRole] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXUserRole_ids) PRIMARY KEY,
    [strRole] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE BRIXUserRolePermissions_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXUserRolePermissions] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXUserRolePermissions_ids) PRIMARY KEY,
    [strRole] nvarchar(100),
    [nPermission] int,
    [bAllowed] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXUserRolePermissions_strRole] ON [BRIXUserRolePermissions] ([strRole]);
CREATE SEQUENCE BRIXUserPermissions_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXUserPermissions] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXUserPermissions_ids) PRIMARY KEY,
    [strUserID] nvarchar(100),
    [nPermission] int,
    [bAllowed] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXUserPermissions_strUserID] ON [BRIXUserPermissions] ([strUserID]);
CREATE SEQUENCE BRIXMinisters_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXMinisters] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXMinisters_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [strName] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXMinisters_lTaxFormID] ON [BRIXMinisters] ([lTaxFormID]);
CREATE SEQUENCE BRIXCalculatedBenefits_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXCalculatedBenefits] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXCalculatedBenefits_ids) PRIMARY KEY,
    [nType] int,
    [lMinisterID] int,
    [amtBenefit] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXCalculatedBenefits_lMinisterID] ON [BRIXCalculatedBenefits] ([lMinisterID]);
CREATE SEQUENCE BRIXNewEmploy_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXNewEmploy] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXNewEmploy_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [strGUID] nvarchar(max),
    [nOrdering] int,
    [strEmployerName] nvarchar(max),
    [strPAYEReference] nvarchar(max),
    [strWorksNumber] nvarchar(max),
    [dtStart] date,
    [dtEnd] date,
    [amtPay] money,
    [amtTax] money,
    [amtStudentLoan] money,
    [bFromHMRC] bit DEFAULT 0,
    [strNotesAudit] nvarchar(max),
    [strNotesReturn] nvarchar(max),
    [strNotesEstimate] nvarchar(max),
    [strNotesAvoidance] nvarchar(max),
    [strSchemeReference] nvarchar(max),
    [nSchemeYear] smallint,
    [bCompleted] bit DEFAULT 0,
    [nP11D] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXNewEmploy_lTaxFormID] ON [BRIXNewEmploy] ([lTaxFormID]);
CREATE SEQUENCE BRIXNewEmployBenefits_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXNewEmployBenefits] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXNewEmployBenefits_ids) PRIMARY KEY,
    [lNewEmployID] int,
    [nType] int,
    [amtBenefit] money,
    [bEstimate] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXNewEmployBenefits_lNewEmployID] ON [BRIXNewEmployBenefits] ([lNewEmployID]);
CREATE SEQUENCE BRIXPensionStateBenefits_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPensionStateBenefits] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPensionStateBenefits_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [nSection] int,
    [nType] int,
    [strDescription] nvarchar(max),
    [strReference] nvarchar(max),
    [strPayer] nvarchar(max),
    [dtStart] date,
    [amtAmount] money,
    [amtTax] money,
    [bEstimate] bit DEFAULT 0,
    [strWorksNumber] nvarchar(max),
    [nOrdering] int,
    [bFromHMRC] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPensionStateBenefits_lTaxFormID] ON [BRIXPensionStateBenefits] ([lTaxFormID]);
CREATE SEQUENCE BRIXPSBDetails_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPSBDetails] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPSBDetails_ids) PRIMARY KEY,
    [lPensionStateBenefitsID] int,
    [dtPaid] date,
    [amtAmount] money,
    [amtTax] money,
    [nOrdering] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPSBDetails_lPensionStateBenefitsID] ON [BRIXPSBDetails] ([lPensionStateBenefitsID]);
CREATE SEQUENCE BRIXBTaxProprietor_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXBTaxProprietor] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXBTaxProprietor_ids) PRIMARY KEY,
    [lClientID] int,
    [lpClientID] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXBTaxProprietor_lClientID] ON [BRIXBTaxProprietor] ([lClientID]);
CREATE INDEX [IX_BRIXBTaxProprietor_lpClientID] ON [BRIXBTaxProprietor] ([lpClientID]);
CREATE SEQUENCE BRIXPartnershipClients_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPartnershipClients] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPartnershipClients_ids) PRIMARY KEY,
    [lClientID] int,
    [lpClientID] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipClients_lClientID] ON [BRIXPartnershipClients] ([lClientID]);
CREATE INDEX [IX_BRIXPartnershipClients_lpClientID] ON [BRIXPartnershipClients] ([lpClientID]);
CREATE SEQUENCE BRIXFBISubmissions_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXFBISubmissions] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXFBISubmissions_ids) PRIMARY KEY,
    [nYear] smallint,
    [lClientID] int,
    [nStatus] int,
    [dtSubmitted] datetime2(3),
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXFBISubmissions_lClientID] ON [BRIXFBISubmissions] ([lClientID]);
CREATE SEQUENCE BRIXPartnershipFBISubmissions_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPartnershipFBISubmissions] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPartnershipFBISubmissions_ids) PRIMARY KEY,
    [lpClientID] int,
    [nStatus] int,
    [nYear] smallint,
    [dtSubmitted] datetime2(3),
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipFBISubmissions_lpClientID] ON [BRIXPartnershipFBISubmissions] ([lpClientID]);
CREATE SEQUENCE BRIXNewInterest_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXNewInterest] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXNewInterest_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [lJointIncomeSourceTaxYearID] int,
    [strName] nvarchar(max),
    [nFlagA] int,
    [nFlagB] int,
    [nType] int,
    [amtIncome] money,
    [amtBFWD] money,
    [amtAddition] money,
    [amtDeduction] money,
    [strNotesAudit] nvarchar(max),
    [strNotesReturn] nvarchar(max),
    [strNotesEstimate] nvarchar(max),
    [strNotesAvoidance] nvarchar(max),
    [nOrdering] int,
    [strSchemeReference] nvarchar(max),
    [nSchemeYear] smallint,
    [bCompleted] bit DEFAULT 0,
    [bJoint] bit DEFAULT 0,
    [dblClientShare] float,
    [nJointView] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterest_lTaxFormID] ON [BRIXNewInterest] ([lTaxFormID]);
CREATE INDEX [IX_BRIXNewInterest_lJointIncomeSourceTaxYearID] ON [BRIXNewInterest] ([lJointIncomeSourceTaxYearID]);
CREATE SEQUENCE BRIXNewInterestGrid_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXNewInterestGrid] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXNewInterestGrid_ids) PRIMARY KEY,
    [lNewInterestID] int,
    [dtPaid] date,
    [amtIncome] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterestGrid_lNewInterestID] ON [BRIXNewInterestGrid] ([lNewInterestID]);
CREATE SEQUENCE BRIXNewInterestJoint_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXNewInterestJoint] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXNewInterestJoint_ids) PRIMARY KEY,
    [lNewInterestID] int,
    [amtIncome] money,
    [amtBFWD] money,
    [amtAddition] money,
    [amtDeduction] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterestJoint_lNewInterestID] ON [BRIXNewInterestJoint] ([lNewInterestID]);
CREATE SEQUENCE BRIXNewInterestJointGrid_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXNewInterestJointGrid] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXNewInterestJointGrid_ids) PRIMARY KEY,
    [lNewInterestJointID] int,
    [dtPaid] date,
    [amtIncome] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterestJointGrid_lNewInterestJointID] ON [BRIXNewInterestJointGrid] ([lNewInterestJointID]);
CREATE SEQUENCE BRIXNewInterestPayment_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXNewInterestPayment] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXNewInterestPayment_ids) PRIMARY KEY,
    [lNewInterestID] int,
    [nOrdering] int,
    [dtPaid] date,
    [amtNet] money,
    [amtTax] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterestPayment_lNewInterestID] ON [BRIXNewInterestPayment] ([lNewInterestID]);
CREATE SEQUENCE BRIXNewInterestUT_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXNewInterestUT] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXNewInterestUT_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [strName] nvarchar(max),
    [nOrdering] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXNewInterestUT_lTaxFormID] ON [BRIXNewInterestUT] ([lTaxFormID]);
CREATE SEQUENCE BRIXJointIncomeSourceTaxYear_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXJointIncomeSourceTaxYear] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXJointIncomeSourceTaxYear_ids) PRIMARY KEY,
    [lClientID] int,
    [nYear] smallint,
    [lSpouseID] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXJointIncomeSourceTaxYear_lClientID] ON [BRIXJointIncomeSourceTaxYear] ([lClientID]);
CREATE SEQUENCE BRIXOtherForeignIncome_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXOtherForeignIncome] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXOtherForeignIncome_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [strName] nvarchar(max),
    [nFlagA] int,
    [nFlagB] int,
    [amtBFWD] money,
    [amtAddition] money,
    [amtDeduction] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXOtherForeignIncome_lTaxFormID] ON [BRIXOtherForeignIncome] ([lTaxFormID]);
CREATE SEQUENCE BRIXOtherForeignIncomeGrid_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXOtherForeignIncomeGrid] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXOtherForeignIncomeGrid_ids) PRIMARY KEY,
    [lOtherForeignIncomeID] int,
    [amtIncome] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXOtherForeignIncomeGrid_lOtherForeignIncomeID] ON [BRIXOtherForeignIncomeGrid] ([lOtherForeignIncomeID]);
CREATE SEQUENCE BRIXPartnershipAccruedIncome_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPartnershipAccruedIncome] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPartnershipAccruedIncome_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [lpClientID] int,
    [strName] nvarchar(max),
    [nKind] int,
    [amtBFWD] money,
    [amtAddition] money,
    [amtDeduction] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPartnershipAccruedIncome_lTaxFormID] ON [BRIXPartnershipAccruedIncome] ([lTaxFormID]);
CREATE SEQUENCE BRIXBTaxAccountingPeriod_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXBTaxAccountingPeriod] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXBTaxAccountingPeriod_ids) PRIMARY KEY,
    [lBTaxProprietorID] int,
    [dtStart] date,
    [dtEnd] date,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXBTaxAccountingPeriod_lBTaxProprietorID] ON [BRIXBTaxAccountingPeriod] ([lBTaxProprietorID]);
CREATE SEQUENCE BRIXBTaxNoTaxInvestmentIncome_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXBTaxNoTaxInvestmentIncome] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXBTaxNoTaxInvestmentIncome_ids) PRIMARY KEY,
    [lBTaxAccountingPeriodID] int,
    [nType] int,
    [amtAmount] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXBTaxNoTaxInvestmentIncome_lBTaxAccountingPeriodID] ON [BRIXBTaxNoTaxInvestmentIncome] ([lBTaxAccountingPeriodID]);
CREATE SEQUENCE BRIXBTaxNoTaxInvestmentIncomeSplit_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXBTaxNoTaxInvestmentIncomeSplit] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXBTaxNoTaxInvestmentIncomeSplit_ids) PRIMARY KEY,
    [lBTaxNoTaxInvestmentIncomeID] int,
    [lClientID] int,
    [amtShare] money,
    [amtShareOverride] money,
    [bOverride] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXBTaxNoTaxInvestmentIncomeSplit_lBTaxNoTaxInvestmentIncomeID] ON [BRIXBTaxNoTaxInvestmentIncomeSplit] ([lBTaxNoTaxInvestmentIncomeID]);
CREATE SEQUENCE BRIXCGT_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXCGT] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXCGT_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXCGT_lTaxFormID] ON [BRIXCGT] ([lTaxFormID]);
CREATE SEQUENCE BRIXCGTAcq_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXCGTAcq] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXCGTAcq_ids) PRIMARY KEY,
    [nOrdering] int,
    [lCGTID] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXCGTAcq_lCGTID] ON [BRIXCGTAcq] ([lCGTID]);
CREATE SEQUENCE BRIXEmployUKIncome_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXEmployUKIncome] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXEmployUKIncome_ids) PRIMARY KEY,
    [lNewEmployID] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXEmployUKIncome_lNewEmployID] ON [BRIXEmployUKIncome] ([lNewEmployID]);
CREATE SEQUENCE BRIXEmployUKIncomeDetails_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXEmployUKIncomeDetails] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXEmployUKIncomeDetails_ids) PRIMARY KEY,
    [lEmployUKIncomeID] int,
    [nOrdering] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXEmployUKIncomeDetails_lEmployUKIncomeID] ON [BRIXEmployUKIncomeDetails] ([lEmployUKIncomeID]);
CREATE SEQUENCE BRIXOtherOut_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXOtherOut] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXOtherOut_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [nOrdering] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXOtherOut_lTaxFormID] ON [BRIXOtherOut] ([lTaxFormID]);
CREATE SEQUENCE BRIXPlan_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPlan] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPlan_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [nOrdering] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPlan_lTaxFormID] ON [BRIXPlan] ([lTaxFormID]);
CREATE SEQUENCE BRIXPlanPayment_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPlanPayment] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPlanPayment_ids) PRIMARY KEY,
    [nOrdering] int,
    [lPlanID] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPlanPayment_lPlanID] ON [BRIXPlanPayment] ([lPlanID]);
CREATE SEQUENCE BRIXPropUK_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXPropUK] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXPropUK_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [nOrdering] int,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXPropUK_lTaxFormID] ON [BRIXPropUK] ([lTaxFormID]);
CREATE SEQUENCE BRIXChild_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXChild] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXChild_ids) PRIMARY KEY,
    [strName] nvarchar(max),
    [dtBirth] date,
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE BRIXChildParentLink_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXChildParentLink] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXChildParentLink_ids) PRIMARY KEY,
    [lChildID] int,
    [lClientID] int,
    [dtStart] date,
    [dtEnd] date,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXChildParentLink_lChildID] ON [BRIXChildParentLink] ([lChildID]);
CREATE SEQUENCE BRIXChildOtherParentLink_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXChildOtherParentLink] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXChildOtherParentLink_ids) PRIMARY KEY,
    [lChildID] int,
    [strName] nvarchar(max),
    [dtStart] date,
    [dtEnd] date,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXChildOtherParentLink_lChildID] ON [BRIXChildOtherParentLink] ([lChildID]);
CREATE SEQUENCE BRIXChildSchedule_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXChildSchedule] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXChildSchedule_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [lChildID] int,
    [nAllowance] int,
    [nAllowanceInYear] int,
    [bShared] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXChildSchedule_lTaxFormID] ON [BRIXChildSchedule] ([lTaxFormID]);
CREATE SEQUENCE BRIXMTD_TaxYear_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXMTD_TaxYear] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXMTD_TaxYear_ids) PRIMARY KEY,
    [lClientID] int,
    [nYear] smallint,
    [dtFetched] datetime2(3),
    [dtComplete] datetime2(3),
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_TaxYear_lClientID] ON [BRIXMTD_TaxYear] ([lClientID]);
CREATE SEQUENCE BRIXMTD_Employments_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXMTD_Employments] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXMTD_Employments_ids) PRIMARY KEY,
    [strKey] nvarchar(max),
    [lMTD_TaxYearID] int,
    [strEmployerName] nvarchar(max),
    [strPAYEReference] nvarchar(max),
    [strWorksNumber] nvarchar(max),
    [dtStart] date,
    [dtEnd] date,
    [amtPay] money,
    [amtTax] money,
    [amtStudentLoan] money,
    [bWithdrawn] bit DEFAULT 0,
    [bOffPayroll] bit DEFAULT 0,
    [nDecision] int,
    [strDecided] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_Employments_lMTD_TaxYearID] ON [BRIXMTD_Employments] ([lMTD_TaxYearID]);
CREATE SEQUENCE BRIXMTD_EmploymentsCompanyBenefits_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXMTD_EmploymentsCompanyBenefits] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXMTD_EmploymentsCompanyBenefits_ids) PRIMARY KEY,
    [lMTD_EmploymentsID] int,
    [nBenefitType] int,
    [strBenefitType] nvarchar(max),
    [amtAmount] money,
    [bForecast] bit DEFAULT 0,
    [bWithdrawn] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_EmploymentsCompanyBenefits_lMTD_EmploymentsID] ON [BRIXMTD_EmploymentsCompanyBenefits] ([lMTD_EmploymentsID]);
CREATE SEQUENCE BRIXMTD_PensionStateBenefits_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXMTD_PensionStateBenefits] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXMTD_PensionStateBenefits_ids) PRIMARY KEY,
    [lMTD_TaxYearID] int,
    [nMTDType] int,
    [dtStart] date,
    [strReference] nvarchar(max),
    [strPayer] nvarchar(max),
    [amtAmount] money,
    [amtTax] money,
    [bWithdrawn] bit DEFAULT 0,
    [strWorksNumber] nvarchar(max),
    [nDecision] int,
    [strDecided] nvarchar(max),
    [dtEnd] date,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_PensionStateBenefits_lMTD_TaxYearID] ON [BRIXMTD_PensionStateBenefits] ([lMTD_TaxYearID]);
CREATE SEQUENCE BRIXMTD_TaxFreeAllowances_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXMTD_TaxFreeAllowances] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXMTD_TaxFreeAllowances_ids) PRIMARY KEY,
    [lMTD_TaxYearID] int,
    [strAllowanceType] nvarchar(max),
    [amtAmount] money,
    [nAllowanceType] int,
    [bWithdrawn] bit DEFAULT 0,
    [nDecision] int,
    [strDecided] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_TaxFreeAllowances_lMTD_TaxYearID] ON [BRIXMTD_TaxFreeAllowances] ([lMTD_TaxYearID]);
CREATE SEQUENCE BRIXMTD_NIC_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXMTD_NIC] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXMTD_NIC_ids) PRIMARY KEY,
    [lMTD_TaxYearID] int,
    [amtClass1Earnings] money,
    [amtClass2Due] money,
    [dtUpdated] datetime2(3),
    [bMaxNICsReached] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXMTD_NIC_lMTD_TaxYearID] ON [BRIXMTD_NIC] ([lMTD_TaxYearID]);
CREATE SEQUENCE BRIXCountry_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXCountry] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXCountry_ids) PRIMARY KEY,
    [strName] nvarchar(max),
    [strAbbr] nvarchar(max),
    [strCurrency] nvarchar(max),
    [strCurrencyAbbr] nvarchar(max),
    [bEU] bit DEFAULT 0,
    [dtEUStart] date,
    [dtEUEnd] date,
    [nFirstYear] smallint,
    [nLastYear] smallint,
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE BRIXDTARate_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXDTARate] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXDTARate_ids) PRIMARY KEY,
    [lCountryID] int,
    [dtEffective] date,
    [dblDividend] float,
    [dblInterest] float,
    [dblRoyalty] float,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXDTARate_lCountryID] ON [BRIXDTARate] ([lCountryID]);
CREATE SEQUENCE BRIXBank_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXBank] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXBank_ids) PRIMARY KEY,
    [strName] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE ClientEnquiry_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [ClientEnquiry] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR ClientEnquiry_ids) PRIMARY KEY,
    [lClientID] int,
    [lpClientID] int,
    [nYear] smallint,
    [strDescription] nvarchar(max),
    [bCarryForward] bit DEFAULT 0,
    [SourceID] int,
    [SourceTypeID] int,
    [TypeID] int,
    [dtStart] date,
    [dtDue] date,
    [dtReminder] date,
    [dtReceived] date,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_ClientEnquiry_lClientID] ON [ClientEnquiry] ([lClientID]);
CREATE INDEX [IX_ClientEnquiry_lpClientID] ON [ClientEnquiry] ([lpClientID]);
CREATE SEQUENCE BRIXClientEnquirySettings_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXClientEnquirySettings] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXClientEnquirySettings_ids) PRIMARY KEY,
    [strUserID] nvarchar(max),
    [bHideCompleted] bit DEFAULT 0,
    [bAllYears] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE Source_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [Source] (
    [SourceID] int NOT NULL DEFAULT (NEXT VALUE FOR Source_ids) PRIMARY KEY,
    [ClientID] int,
    [pClientID] int,
    [Year] smallint,
    [SourceTypeID] int,
    [Status] nvarchar(max),
    [ShowReminder] bit DEFAULT 0,
    [Description] nvarchar(max),
    [bUserCreated] bit DEFAULT 0,
    [strDefaultTrackerGUID] nvarchar(max),
    [bCFStaff] bit DEFAULT 0,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_Source_ClientID] ON [Source] ([ClientID]);
CREATE INDEX [IX_Source_pClientID] ON [Source] ([pClientID]);
CREATE SEQUENCE SourceType_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [SourceType] (
    [SourceTypeID] int NOT NULL DEFAULT (NEXT VALUE FOR SourceType_ids) PRIMARY KEY,
    [ShowReminder] bit DEFAULT 0,
    [Description] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE TABLE [SourceTask] (
    [SourceID] int NOT NULL,
    [TypeID] int NOT NULL,
    [ListOrder] int,
    [DueDate] date,
    [ReminderDate] date,
    [bRequired] bit DEFAULT 1,
    [bComplete] bit DEFAULT 0,
    [strAssignedTo] nvarchar(max),
    [Description] nvarchar(max),
    [nVersion] int DEFAULT 0,
    PRIMARY KEY ([SourceID], [TypeID])
);
CREATE INDEX [IX_SourceTask_SourceID] ON [SourceTask] ([SourceID]);
CREATE TABLE [SourceDefaultTask] (
    [SourceTypeID] int,
    [TypeID] int,
    [DefaultTrackerID] int,
    [ListOrder] int,
    [DueDate] date,
    [ReminderDate] date,
    [nVersion] int DEFAULT 0
);
CREATE UNIQUE INDEX [UX_SourceDefaultTask_SourceTypeID_TypeID_DefaultTrackerID] ON [SourceDefaultTask] ([SourceTypeID], [TypeID], [DefaultTrackerID]) WHERE [SourceTypeID] IS NOT NULL AND [TypeID] IS NOT NULL AND [DefaultTrackerID] IS NOT NULL;
CREATE INDEX [IX_SourceDefaultTask_SourceTypeID] ON [SourceDefaultTask] ([SourceTypeID]);
CREATE SEQUENCE SourceTaskTypeRef_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [SourceTaskTypeRef] (
    [TypeID] int NOT NULL DEFAULT (NEXT VALUE FOR SourceTaskTypeRef_ids) PRIMARY KEY,
    [default] bit DEFAULT 0,
    [Description] nvarchar(max),
    [nVersion] int DEFAULT 0
);
CREATE SEQUENCE BRIXForeignDividend_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXForeignDividend] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXForeignDividend_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [nOrdering] int,
    [strCompany] nvarchar(max),
    [strCountryAbbr] nvarchar(max),
    [dtPaid] date,
    [amtNet] money,
    [amtForeignTax] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXForeignDividend_lTaxFormID] ON [BRIXForeignDividend] ([lTaxFormID]);
CREATE SEQUENCE BRIXChangeOfBasis_ids AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;
CREATE TABLE [BRIXChangeOfBasis] (
    [lID] int NOT NULL DEFAULT (NEXT VALUE FOR BRIXChangeOfBasis_ids) PRIMARY KEY,
    [lTaxFormID] int,
    [lClientID] int,
    [nYear] smallint,
    [nColumn] int,
    [amtRow0] money,
    [amtRow1] money,
    [amtRow2] money,
    [amtRow3] money,
    [nVersion] int DEFAULT 0
);
CREATE INDEX [IX_BRIXChangeOfBasis_lTaxFormID] ON [BRIXChangeOfBasis] ([lTaxFormID]);
CREATE TABLE [MTDAuthorisation] (
    [lID] int NOT NULL PRIMARY KEY,
    [strGatewayID] nvarchar(100),
    [nAuthorisedStatus] smallint DEFAULT 0,
    [vbAccessToken] varbinary(max),
    [vbRefreshToken] varbinary(max),
    [nExpiresIn] int,
    [strScope] nvarchar(1000),
    [strTokenType] nvarchar(50),
    [dtAuthenticated] datetime2(3),
    [dtGranted] datetime2(3),
    [strService] nvarchar(200),
    [vbRoom] varbinary(max)
);
CREATE UNIQUE INDEX [UX_MTDAuthorisation_strGatewayID] ON [MTDAuthorisation] ([strGatewayID]) WHERE [strGatewayID] IS NOT NULL;
CREATE TABLE [MTDAuthorisationLock] (
    [lMTDAuthorisationID] int NOT NULL PRIMARY KEY,
    [strUserID] nvarchar(100),
    [strWorkstation] nvarchar(15),
    [dtLocked] datetime2(3) DEFAULT (GETUTCDATE()),
    [ConnectionID] int DEFAULT (@@SPID)
);
CREATE TABLE [MTDLog] (
    [lID] int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [strUserID] nvarchar(100),
    [strWorkstation] nvarchar(15),
    [strSessionID] nvarchar(100),
    [strChainID] nvarchar(100),
    [strEvent] nvarchar(max),
    [strInterface] nvarchar(max),
    [strRequest] nvarchar(max),
    [strResponse] nvarchar(max),
    [strDetail] nvarchar(max),
    [dtLogged] datetime2(3) DEFAULT (GETDATE())
);
CREATE TABLE [MTDPace] (
    [lID] int NOT NULL PRIMARY KEY,
    [dtNext] datetime2(3)
);
CREATE TABLE [MTDFetchRun] (
    [lYear] int NOT NULL PRIMARY KEY,
    [dtBegan] datetime2(3)
);
CREATE TABLE [MorvUserLocks] (
    [UserId] nvarchar(100),
    [ConnectionID] int DEFAULT (@@SPID),
    [dtLocked] datetime2(3) DEFAULT (GETDATE()),
    [strWorkstation] nvarchar(128) DEFAULT (HOST_NAME())
);
CREATE TABLE [BTaxUserLocks] (
    [UserId] nvarchar(100),
    [ConnectionID] int DEFAULT (@@SPID),
    [dtLocked] datetime2(3) DEFAULT (GETDATE()),
    [strWorkstation] nvarchar(128) DEFAULT (HOST_NAME())
);
CREATE TABLE [TrustTaxUserLocks] (
    [UserId] nvarchar(100),
    [ConnectionID] int DEFAULT (@@SPID),
    [dtLocked] datetime2(3) DEFAULT (GETDATE()),
    [strWorkstation] nvarchar(128) DEFAULT (HOST_NAME())
);
CREATE TABLE [FeatureLocks] (
    [nFeature] int NOT NULL PRIMARY KEY,
    [strUserID] nvarchar(100),
    [strWorkstation] nvarchar(15),
    [dtLocked] datetime2(3) DEFAULT (GETDATE()),
    [ConnectionID] int DEFAULT (@@SPID)
);
CREATE TABLE [MTDAudit] (
    [lID] int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [lClientID] int,
    [strAction] nvarchar(max),
    [nYear] smallint,
    [strUserID] nvarchar(100),
    [strItem] nvarchar(max),
    [strHMRC] nvarchar(max),
    [strReturn] nvarchar(max),
    [dtWritten] datetime2(3) DEFAULT (GETDATE())
);
CREATE TABLE [BRIXSchema] (
    [nVersion] int DEFAULT 0,
    [vbKeyCheck] varbinary(max)
);
CREATE TABLE [BRIXNextID] (
    [strTable] nvarchar(100) NOT NULL PRIMARY KEY,
    [lNext] int
);
EXEC('CREATE PROCEDURE MTDLogWrite @p1 nvarchar(max), @p2 nvarchar(max), @p3 nvarchar(max), @p4 nvarchar(max), @p5 nvarchar(max), @p6 nvarchar(max), @p7 nvarchar(max), @p8 nvarchar(max), @p9 nvarchar(max) AS INSERT INTO [MTDLog] ([strUserID], [strWorkstation], [strSessionID], [strChainID], [strEvent], [strInterface], [strRequest], [strResponse], [strDetail]) VALUES (@p1, @p2, @p3, @p4, @p5, @p6, @p7, @p8, @p9)');
