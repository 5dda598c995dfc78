CREATE COLLATION IF NOT EXISTS morvut_nocase (provider = icu, locale = 'und-u-ks-level2', deterministic = false);
CREATE SEQUENCE IF NOT EXISTS BRIXClient_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixclient" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXClient_ids') PRIMARY KEY,
    "strcode" text COLLATE morvut_nocase,
    "strname" text COLLATE morvut_nocase,
    "strutr" text COLLATE morvut_nocase,
    "strninumber" text COLLATE morvut_nocase,
    "btrust" smallint DEFAULT 0,
    "bactive" smallint DEFAULT 1,
    "dtdeath" date,
    "strentitytype" text COLLATE morvut_nocase,
    "btrustoption" smallint DEFAULT 0,
    "ntrustkind" integer,
    "bnotaxreturnsource" smallint DEFAULT 0,
    "dtmodified" timestamp(3),
    "strmodifiedby" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS BRIXPartnership_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpartnership" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPartnership_ids') PRIMARY KEY,
    "strcode" text COLLATE morvut_nocase,
    "strname" text COLLATE morvut_nocase,
    "strutr" text COLLATE morvut_nocase,
    "bactive" smallint DEFAULT 1,
    "dtcessation" date,
    "bllp" smallint DEFAULT 0,
    "dtmodified" timestamp(3),
    "strmodifiedby" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS BRIXTaxForm_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixtaxform" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXTaxForm_ids') PRIMARY KEY,
    "lclientid" integer,
    "nyear" smallint,
    "dtclientreview" date,
    "dtfinalised" date,
    "bdormant" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixtaxform_lclientid" ON "brixtaxform" ("lclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXPartnershipTaxForm_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpartnershiptaxform" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPartnershipTaxForm_ids') PRIMARY KEY,
    "lpclientid" integer,
    "nyear" smallint,
    "bdormant" smallint DEFAULT 0,
    "dtclientreview" date,
    "dtfinalised" date,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixpartnershiptaxform_lpclientid" ON "brixpartnershiptaxform" ("lpclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXClientPeriodsInactivity_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixclientperiodsinactivity" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXClientPeriodsInactivity_ids') PRIMARY KEY,
    "lclientid" integer,
    "dtstart" date,
    "dtend" date,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixclientperiodsinactivity_lclientid" ON "brixclientperiodsinactivity" ("lclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXPartnershipPeriodsInactivity_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpartnershipperiodsinactivity" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPartnershipPeriodsInactivity_ids') PRIMARY KEY,
    "lpclientid" integer,
    "dtstart" date,
    "dtend" date,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixpartnershipperiodsinactivity_lpclientid" ON "brixpartnershipperiodsinactivity" ("lpclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXClientYearly_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixclientyearly" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXClientYearly_ids') PRIMARY KEY,
    "lclientid" integer,
    "nyear" smallint,
    "nstatus" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixclientyearly_lclientid" ON "brixclientyearly" ("lclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXPartnershipYearly_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpartnershipyearly" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPartnershipYearly_ids') PRIMARY KEY,
    "lpclientid" integer,
    "nyear" smallint,
    "nstatus" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixpartnershipyearly_lpclientid" ON "brixpartnershipyearly" ("lpclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXOtherReturnInfo_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixotherreturninfo" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXOtherReturnInfo_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "ntaxpayerstatus" integer,
    "btradingallowance" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixotherreturninfo_ltaxformid" ON "brixotherreturninfo" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXPFile_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpfile" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPFile_ids') PRIMARY KEY,
    "nvalue" integer,
    "nyear" smallint,
    "amtturnoversole" numeric(19,4),
    "amtturnoversoleold" numeric(19,4),
    "amtturnoverpartnership" numeric(19,4),
    "amtturnoverpartnershipold" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS BRIXOptions_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixoptions" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXOptions_ids') PRIMARY KEY,
    "npayeinterface" smallint,
    "ndebuglogging" integer,
    "bhmrcretrieval" smallint DEFAULT 0,
    "bcfstaff" smallint DEFAULT 0,
    "ndateformat" integer,
    "nhmrclogdays" integer DEFAULT 730,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS BRIXUser_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixuser" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXUser_ids') PRIMARY KEY,
    "struserid" text COLLATE morvut_nocase,
    "strfullname" text COLLATE morvut_nocase,
    "blisted" smallint DEFAULT 1,
    "strrole" text COLLATE morvut_nocase,
    "stremail" text COLLATE morvut_nocase,
    "strtelephone" text COLLATE morvut_nocase,
    "strfbiusername" text COLLATE morvut_nocase,
    "vbfbipassword" bytea,
    "brememberfbipassword" smallint DEFAULT 0,
    "bfbisendimmediately" smallint DEFAULT 0,
    "strgatewayid" text COLLATE morvut_nocase,
    "strtallywickusername" text COLLATE morvut_nocase,
    "vbtallywickpassword" bytea,
    "nuservalue" integer,
    "strpasswordhash" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS BRIXGroup_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixgroup" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXGroup_ids') PRIMARY KEY,
    "strname" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS BRIXGroupUser_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixgroupuser" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXGroupUser_ids') PRIMARY KEY,
    "struserid" text COLLATE morvut_nocase,
    "lgroupid" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixgroupuser_struserid" ON "brixgroupuser" ("struserid");
CREATE INDEX "ix_brixgroupuser_lgroupid" ON "brixgroupuser" ("lgroupid");
CREATE SEQUENCE IF NOT EXISTS BRIXUserRole_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixuserrole" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXUserRole_ids') PRIMARY KEY,
    "strrole" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS BRIXUserRolePermissions_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixuserrolepermissions" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXUserRolePermissions_ids') PRIMARY KEY,
    "strrole" text COLLATE morvut_nocase,
    "npermission" integer,
    "ballowed" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixuserrolepermissions_strrole" ON "brixuserrolepermissions" ("strrole");
CREATE SEQUENCE IF NOT EXISTS BRIXUserPermissions_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixuserpermissions" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXUserPermissions_ids') PRIMARY KEY,
    "struserid" text COLLATE morvut_nocase,
    "npermission" integer,
    "ballowed" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixuserpermissions_struserid" ON "brixuserpermissions" ("struserid");
CREATE SEQUENCE IF NOT EXISTS BRIXMinisters_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixministers" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXMinisters_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "strname" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixministers_ltaxformid" ON "brixministers" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXCalculatedBenefits_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixcalculatedbenefits" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXCalculatedBenefits_ids') PRIMARY KEY,
    "ntype" integer,
    "lministerid" integer,
    "amtbenefit" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixcalculatedbenefits_lministerid" ON "brixcalculatedbenefits" ("lministerid");
CREATE SEQUENCE IF NOT EXISTS BRIXNewEmploy_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixnewemploy" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXNewEmploy_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "strguid" text COLLATE morvut_nocase,
    "nordering" integer,
    "stremployername" text COLLATE morvut_nocase,
    "strpayereference" text COLLATE morvut_nocase,
    "strworksnumber" text COLLATE morvut_nocase,
    "dtstart" date,
    "dtend" date,
    "amtpay" numeric(19,4),
    "amttax" numeric(19,4),
    "amtstudentloan" numeric(19,4),
    "bfromhmrc" smallint DEFAULT 0,
    "strnotesaudit" text COLLATE morvut_nocase,
    "strnotesreturn" text COLLATE morvut_nocase,
    "strnotesestimate" text COLLATE morvut_nocase,
    "strnotesavoidance" text COLLATE morvut_nocase,
    "strschemereference" text COLLATE morvut_nocase,
    "nschemeyear" smallint,
    "bcompleted" smallint DEFAULT 0,
    "np11d" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixnewemploy_ltaxformid" ON "brixnewemploy" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXNewEmployBenefits_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixnewemploybenefits" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXNewEmployBenefits_ids') PRIMARY KEY,
    "lnewemployid" integer,
    "ntype" integer,
    "amtbenefit" numeric(19,4),
    "bestimate" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixnewemploybenefits_lnewemployid" ON "brixnewemploybenefits" ("lnewemployid");
CREATE SEQUENCE IF NOT EXISTS BRIXPensionStateBenefits_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpensionstatebenefits" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPensionStateBenefits_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "nsection" integer,
    "ntype" integer,
    "strdescription" text COLLATE morvut_nocase,
    "strreference" text COLLATE morvut_nocase,
    "strpayer" text COLLATE morvut_nocase,
    "dtstart" date,
    "amtamount" numeric(19,4),
    "amttax" numeric(19,4),
    "bestimate" smallint DEFAULT 0,
    "strworksnumber" text COLLATE morvut_nocase,
    "nordering" integer,
    "bfromhmrc" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixpensionstatebenefits_ltaxformid" ON "brixpensionstatebenefits" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXPSBDetails_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpsbdetails" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPSBDetails_ids') PRIMARY KEY,
    "lpensionstatebenefitsid" integer,
    "dtpaid" date,
    "amtamount" numeric(19,4),
    "amttax" numeric(19,4),
    "nordering" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixpsbdetails_lpensionstatebenefitsid" ON "brixpsbdetails" ("lpensionstatebenefitsid");
CREATE SEQUENCE IF NOT EXISTS BRIXBTaxProprietor_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixbtaxproprietor" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXBTaxProprietor_ids') PRIMARY KEY,
    "lclientid" integer,
    "lpclientid" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixbtaxproprietor_lclientid" ON "brixbtaxproprietor" ("lclientid");
CREATE INDEX "ix_brixbtaxproprietor_lpclientid" ON "brixbtaxproprietor" ("lpclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXPartnershipClients_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpartnershipclients" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPartnershipClients_ids') PRIMARY KEY,
    "lclientid" integer,
    "lpclientid" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixpartnershipclients_lclientid" ON "brixpartnershipclients" ("lclientid");
CREATE INDEX "ix_brixpartnershipclients_lpclientid" ON "brixpartnershipclients" ("lpclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXFBISubmissions_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixfbisubmissions" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXFBISubmissions_ids') PRIMARY KEY,
    "nyear" smallint,
    "lclientid" integer,
    "nstatus" integer,
    "dtsubmitted" timestamp(3),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixfbisubmissions_lclientid" ON "brixfbisubmissions" ("lclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXPartnershipFBISubmissions_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpartnershipfbisubmissions" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPartnershipFBISubmissions_ids') PRIMARY KEY,
    "lpclientid" integer,
    "nstatus" integer,
    "nyear" smallint,
    "dtsubmitted" timestamp(3),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixpartnershipfbisubmissions_lpclientid" ON "brixpartnershipfbisubmissions" ("lpclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXNewInterest_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixnewinterest" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXNewInterest_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "ljointincomesourcetaxyearid" integer,
    "strname" text COLLATE morvut_nocase,
    "nflaga" integer,
    "nflagb" integer,
    "ntype" integer,
    "amtincome" numeric(19,4),
    "amtbfwd" numeric(19,4),
    "amtaddition" numeric(19,4),
    "amtdeduction" numeric(19,4),
    "strnotesaudit" text COLLATE morvut_nocase,
    "strnotesreturn" text COLLATE morvut_nocase,
    "strnotesestimate" text COLLATE morvut_nocase,
    "strnotesavoidance" text COLLATE morvut_nocase,
    "nordering" integer,
    "strschemereference" text COLLATE morvut_nocase,
    "nschemeyear" smallint,
    "bcompleted" smallint DEFAULT 0,
    "bjoint" smallint DEFAULT 0,
    "dblclientshare" double precision,
    "njointview" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixnewinterest_ltaxformid" ON "brixnewinterest" ("ltaxformid");
CREATE INDEX "ix_brixnewinterest_ljointincomesourcetaxyearid" ON "brixnewinterest" ("ljointincomesourcetaxyearid");
CREATE SEQUENCE IF NOT EXISTS BRIXNewInterestGrid_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixnewinterestgrid" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXNewInterestGrid_ids') PRIMARY KEY,
    "lnewinterestid" integer,
    "dtpaid" date,
    "amtincome" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixnewinterestgrid_lnewinterestid" ON "brixnewinterestgrid" ("lnewinterestid");
CREATE SEQUENCE IF NOT EXISTS BRIXNewInterestJoint_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixnewinterestjoint" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXNewInterestJoint_ids') PRIMARY KEY,
    "lnewinterestid" integer,
    "amtincome" numeric(19,4),
    "amtbfwd" numeric(19,4),
    "amtaddition" numeric(19,4),
    "amtdeduction" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixnewinterestjoint_lnewinterestid" ON "brixnewinterestjoint" ("lnewinterestid");
CREATE SEQUENCE IF NOT EXISTS BRIXNewInterestJointGrid_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixnewinterestjointgrid" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXNewInterestJointGrid_ids') PRIMARY KEY,
    "lnewinterestjointid" integer,
    "dtpaid" date,
    "amtincome" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixnewinterestjointgrid_lnewinterestjointid" ON "brixnewinterestjointgrid" ("lnewinterestjointid");
CREATE SEQUENCE IF NOT EXISTS BRIXNewInterestPayment_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixnewinterestpayment" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXNewInterestPayment_ids') PRIMARY KEY,
    "lnewinterestid" integer,
    "nordering" integer,
    "dtpaid" date,
    "amtnet" numeric(19,4),
    "amttax" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixnewinterestpayment_lnewinterestid" ON "brixnewinterestpayment" ("lnewinterestid");
CREATE SEQUENCE IF NOT EXISTS BRIXNewInterestUT_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixnewinterestut" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXNewInterestUT_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "strname" text COLLATE morvut_nocase,
    "nordering" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixnewinterestut_ltaxformid" ON "brixnewinterestut" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXJointIncomeSourceTaxYear_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixjointincomesourcetaxyear" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXJointIncomeSourceTaxYear_ids') PRIMARY KEY,
    "lclientid" integer,
    "nyear" smallint,
    "lspouseid" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixjointincomesourcetaxyear_lclientid" ON "brixjointincomesourcetaxyear" ("lclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXOtherForeignIncome_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixotherforeignincome" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXOtherForeignIncome_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "strname" text COLLATE morvut_nocase,
    "nflaga" integer,
    "nflagb" integer,
    "amtbfwd" numeric(19,4),
    "amtaddition" numeric(19,4),
    "amtdeduction" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixotherforeignincome_ltaxformid" ON "brixotherforeignincome" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXOtherForeignIncomeGrid_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixotherforeignincomegrid" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXOtherForeignIncomeGrid_ids') PRIMARY KEY,
    "lotherforeignincomeid" integer,
    "amtincome" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixotherforeignincomegrid_lotherforeignincomeid" ON "brixotherforeignincomegrid" ("lotherforeignincomeid");
CREATE SEQUENCE IF NOT EXISTS BRIXPartnershipAccruedIncome_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpartnershipaccruedincome" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPartnershipAccruedIncome_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "lpclientid" integer,
    "strname" text COLLATE morvut_nocase,
    "nkind" integer,
    "amtbfwd" numeric(19,4),
    "amtaddition" numeric(19,4),
    "amtdeduction" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixpartnershipaccruedincome_ltaxformid" ON "brixpartnershipaccruedincome" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXBTaxAccountingPeriod_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixbtaxaccountingperiod" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXBTaxAccountingPeriod_ids') PRIMARY KEY,
    "lbtaxproprietorid" integer,
    "dtstart" date,
    "dtend" date,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixbtaxaccountingperiod_lbtaxproprietorid" ON "brixbtaxaccountingperiod" ("lbtaxproprietorid");
CREATE SEQUENCE IF NOT EXISTS BRIXBTaxNoTaxInvestmentIncome_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixbtaxnotaxinvestmentincome" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXBTaxNoTaxInvestmentIncome_ids') PRIMARY KEY,
    "lbtaxaccountingperiodid" integer,
    "ntype" integer,
    "amtamount" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixbtaxnotaxinvestmentincome_lbtaxaccountingperiodid" ON "brixbtaxnotaxinvestmentincome" ("lbtaxaccountingperiodid");
CREATE SEQUENCE IF NOT EXISTS BRIXBTaxNoTaxInvestmentIncomeSplit_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixbtaxnotaxinvestmentincomesplit" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXBTaxNoTaxInvestmentIncomeSplit_ids') PRIMARY KEY,
    "lbtaxnotaxinvestmentincomeid" integer,
    "lclientid" integer,
    "amtshare" numeric(19,4),
    "amtshareoverride" numeric(19,4),
    "boverride" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixbtaxnotaxinvestmentincomesplit_lbtaxnotaxinvestmentincomeid" ON "brixbtaxnotaxinvestmentincomesplit" ("lbtaxnotaxinvestmentincomeid");
CREATE SEQUENCE IF NOT EXISTS BRIXCGT_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixcgt" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXCGT_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixcgt_ltaxformid" ON "brixcgt" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXCGTAcq_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixcgtacq" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXCGTAcq_ids') PRIMARY KEY,
    "nordering" integer,
    "lcgtid" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixcgtacq_lcgtid" ON "brixcgtacq" ("lcgtid");
CREATE SEQUENCE IF NOT EXISTS BRIXEmployUKIncome_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixemployukincome" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXEmployUKIncome_ids') PRIMARY KEY,
    "lnewemployid" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixemployukincome_lnewemployid" ON "brixemployukincome" ("lnewemployid");
CREATE SEQUENCE IF NOT EXISTS BRIXEmployUKIncomeDetails_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixemployukincomedetails" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXEmployUKIncomeDetails_ids') PRIMARY KEY,
    "lemployukincomeid" integer,
    "nordering" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixemployukincomedetails_lemployukincomeid" ON "brixemployukincomedetails" ("lemployukincomeid");
CREATE SEQUENCE IF NOT EXISTS BRIXOtherOut_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixotherout" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXOtherOut_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "nordering" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixotherout_ltaxformid" ON "brixotherout" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXPlan_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixplan" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPlan_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "nordering" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixplan_ltaxformid" ON "brixplan" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXPlanPayment_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixplanpayment" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPlanPayment_ids') PRIMARY KEY,
    "nordering" integer,
    "lplanid" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixplanpayment_lplanid" ON "brixplanpayment" ("lplanid");
CREATE SEQUENCE IF NOT EXISTS BRIXPropUK_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixpropuk" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXPropUK_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "nordering" integer,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixpropuk_ltaxformid" ON "brixpropuk" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXChild_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixchild" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXChild_ids') PRIMARY KEY,
    "strname" text COLLATE morvut_nocase,
    "dtbirth" date,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS BRIXChildParentLink_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixchildparentlink" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXChildParentLink_ids') PRIMARY KEY,
    "lchildid" integer,
    "lclientid" integer,
    "dtstart" date,
    "dtend" date,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixchildparentlink_lchildid" ON "brixchildparentlink" ("lchildid");
CREATE SEQUENCE IF NOT EXISTS BRIXChildOtherParentLink_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixchildotherparentlink" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXChildOtherParentLink_ids') PRIMARY KEY,
    "lchildid" integer,
    "strname" text COLLATE morvut_nocase,
    "dtstart" date,
    "dtend" date,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixchildotherparentlink_lchildid" ON "brixchildotherparentlink" ("lchildid");
CREATE SEQUENCE IF NOT EXISTS BRIXChildSchedule_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixchildschedule" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXChildSchedule_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "lchildid" integer,
    "nallowance" integer,
    "nallowanceinyear" integer,
    "bshared" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixchildschedule_ltaxformid" ON "brixchildschedule" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXMTD_TaxYear_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixmtd_taxyear" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXMTD_TaxYear_ids') PRIMARY KEY,
    "lclientid" integer,
    "nyear" smallint,
    "dtfetched" timestamp(3),
    "dtcomplete" timestamp(3),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixmtd_taxyear_lclientid" ON "brixmtd_taxyear" ("lclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXMTD_Employments_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixmtd_employments" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXMTD_Employments_ids') PRIMARY KEY,
    "strkey" text COLLATE morvut_nocase,
    "lmtd_taxyearid" integer,
    "stremployername" text COLLATE morvut_nocase,
    "strpayereference" text COLLATE morvut_nocase,
    "strworksnumber" text COLLATE morvut_nocase,
    "dtstart" date,
    "dtend" date,
    "amtpay" numeric(19,4),
    "amttax" numeric(19,4),
    "amtstudentloan" numeric(19,4),
    "bwithdrawn" smallint DEFAULT 0,
    "boffpayroll" smallint DEFAULT 0,
    "ndecision" integer,
    "strdecided" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixmtd_employments_lmtd_taxyearid" ON "brixmtd_employments" ("lmtd_taxyearid");
CREATE SEQUENCE IF NOT EXISTS BRIXMTD_EmploymentsCompanyBenefits_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixmtd_employmentscompanybenefits" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXMTD_EmploymentsCompanyBenefits_ids') PRIMARY KEY,
    "lmtd_employmentsid" integer,
    "nbenefittype" integer,
    "strbenefittype" text COLLATE morvut_nocase,
    "amtamount" numeric(19,4),
    "bforecast" smallint DEFAULT 0,
    "bwithdrawn" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixmtd_employmentscompanybenefits_lmtd_employmentsid" ON "brixmtd_employmentscompanybenefits" ("lmtd_employmentsid");
CREATE SEQUENCE IF NOT EXISTS BRIXMTD_PensionStateBenefits_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixmtd_pensionstatebenefits" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXMTD_PensionStateBenefits_ids') PRIMARY KEY,
    "lmtd_taxyearid" integer,
    "nmtdtype" integer,
    "dtstart" date,
    "strreference" text COLLATE morvut_nocase,
    "strpayer" text COLLATE morvut_nocase,
    "amtamount" numeric(19,4),
    "amttax" numeric(19,4),
    "bwithdrawn" smallint DEFAULT 0,
    "strworksnumber" text COLLATE morvut_nocase,
    "ndecision" integer,
    "strdecided" text COLLATE morvut_nocase,
    "dtend" date,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixmtd_pensionstatebenefits_lmtd_taxyearid" ON "brixmtd_pensionstatebenefits" ("lmtd_taxyearid");
CREATE SEQUENCE IF NOT EXISTS BRIXMTD_TaxFreeAllowances_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixmtd_taxfreeallowances" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXMTD_TaxFreeAllowances_ids') PRIMARY KEY,
    "lmtd_taxyearid" integer,
    "strallowancetype" text COLLATE morvut_nocase,
    "amtamount" numeric(19,4),
    "nallowancetype" integer,
    "bwithdrawn" smallint DEFAULT 0,
    "ndecision" integer,
    "strdecided" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixmtd_taxfreeallowances_lmtd_taxyearid" ON "brixmtd_taxfreeallowances" ("lmtd_taxyearid");
CREATE SEQUENCE IF NOT EXISTS BRIXMTD_NIC_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixmtd_nic" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXMTD_NIC_ids') PRIMARY KEY,
    "lmtd_taxyearid" integer,
    "amtclass1earnings" numeric(19,4),
    "amtclass2due" numeric(19,4),
    "dtupdated" timestamp(3),
    "bmaxnicsreached" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixmtd_nic_lmtd_taxyearid" ON "brixmtd_nic" ("lmtd_taxyearid");
CREATE SEQUENCE IF NOT EXISTS BRIXCountry_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixcountry" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXCountry_ids') PRIMARY KEY,
    "strname" text COLLATE morvut_nocase,
    "strabbr" text COLLATE morvut_nocase,
    "strcurrency" text COLLATE morvut_nocase,
    "strcurrencyabbr" text COLLATE morvut_nocase,
    "beu" smallint DEFAULT 0,
    "dteustart" date,
    "dteuend" date,
    "nfirstyear" smallint,
    "nlastyear" smallint,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS BRIXDTARate_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixdtarate" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXDTARate_ids') PRIMARY KEY,
    "lcountryid" integer,
    "dteffective" date,
    "dbldividend" double precision,
    "dblinterest" double precision,
    "dblroyalty" double precision,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixdtarate_lcountryid" ON "brixdtarate" ("lcountryid");
CREATE SEQUENCE IF NOT EXISTS BRIXBank_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixbank" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXBank_ids') PRIMARY KEY,
    "strname" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS ClientEnquiry_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "clientenquiry" (
    "lid" integer NOT NULL DEFAULT nextval('ClientEnquiry_ids') PRIMARY KEY,
    "lclientid" integer,
    "lpclientid" integer,
    "nyear" smallint,
    "strdescription" text COLLATE morvut_nocase,
    "bcarryforward" smallint DEFAULT 0,
    "sourceid" integer,
    "sourcetypeid" integer,
    "typeid" integer,
    "dtstart" date,
    "dtdue" date,
    "dtreminder" date,
    "dtreceived" date,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_clientenquiry_lclientid" ON "clientenquiry" ("lclientid");
CREATE INDEX "ix_clientenquiry_lpclientid" ON "clientenquiry" ("lpclientid");
CREATE SEQUENCE IF NOT EXISTS BRIXClientEnquirySettings_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixclientenquirysettings" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXClientEnquirySettings_ids') PRIMARY KEY,
    "struserid" text COLLATE morvut_nocase,
    "bhidecompleted" smallint DEFAULT 0,
    "ballyears" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS Source_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "source" (
    "sourceid" integer NOT NULL DEFAULT nextval('Source_ids') PRIMARY KEY,
    "clientid" integer,
    "pclientid" integer,
    "year" smallint,
    "sourcetypeid" integer,
    "status" text COLLATE morvut_nocase,
    "showreminder" smallint DEFAULT 0,
    "description" text COLLATE morvut_nocase,
    "busercreated" smallint DEFAULT 0,
    "strdefaulttrackerguid" text COLLATE morvut_nocase,
    "bcfstaff" smallint DEFAULT 0,
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_source_clientid" ON "source" ("clientid");
CREATE INDEX "ix_source_pclientid" ON "source" ("pclientid");
CREATE SEQUENCE IF NOT EXISTS SourceType_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "sourcetype" (
    "sourcetypeid" integer NOT NULL DEFAULT nextval('SourceType_ids') PRIMARY KEY,
    "showreminder" smallint DEFAULT 0,
    "description" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE TABLE "sourcetask" (
    "sourceid" integer NOT NULL,
    "typeid" integer NOT NULL,
    "listorder" integer,
    "duedate" date,
    "reminderdate" date,
    "brequired" smallint DEFAULT 1,
    "bcomplete" smallint DEFAULT 0,
    "strassignedto" text COLLATE morvut_nocase,
    "description" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0,
    PRIMARY KEY ("sourceid", "typeid")
);
CREATE INDEX "ix_sourcetask_sourceid" ON "sourcetask" ("sourceid");
CREATE TABLE "sourcedefaulttask" (
    "sourcetypeid" integer,
    "typeid" integer,
    "defaulttrackerid" integer,
    "listorder" integer,
    "duedate" date,
    "reminderdate" date,
    "nversion" integer DEFAULT 0
);
CREATE UNIQUE INDEX "ux_sourcedefaulttask_sourcetypeid_typeid_defaulttrackerid" ON "sourcedefaulttask" ("sourcetypeid", "typeid", "defaulttrackerid");
CREATE INDEX "ix_sourcedefaulttask_sourcetypeid" ON "sourcedefaulttask" ("sourcetypeid");
CREATE SEQUENCE IF NOT EXISTS SourceTaskTypeRef_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "sourcetasktyperef" (
    "typeid" integer NOT NULL DEFAULT nextval('SourceTaskTypeRef_ids') PRIMARY KEY,
    "default" smallint DEFAULT 0,
    "description" text COLLATE morvut_nocase,
    "nversion" integer DEFAULT 0
);
CREATE SEQUENCE IF NOT EXISTS BRIXForeignDividend_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixforeigndividend" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXForeignDividend_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "nordering" integer,
    "strcompany" text COLLATE morvut_nocase,
    "strcountryabbr" text COLLATE morvut_nocase,
    "dtpaid" date,
    "amtnet" numeric(19,4),
    "amtforeigntax" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixforeigndividend_ltaxformid" ON "brixforeigndividend" ("ltaxformid");
CREATE SEQUENCE IF NOT EXISTS BRIXChangeOfBasis_ids AS integer INCREMENT BY 32 MINVALUE 1;
CREATE TABLE "brixchangeofbasis" (
    "lid" integer NOT NULL DEFAULT nextval('BRIXChangeOfBasis_ids') PRIMARY KEY,
    "ltaxformid" integer,
    "lclientid" integer,
    "nyear" smallint,
    "ncolumn" integer,
    "amtrow0" numeric(19,4),
    "amtrow1" numeric(19,4),
    "amtrow2" numeric(19,4),
    "amtrow3" numeric(19,4),
    "nversion" integer DEFAULT 0
);
CREATE INDEX "ix_brixchangeofbasis_ltaxformid" ON "brixchangeofbasis" ("ltaxformid");
CREATE TABLE "mtdauthorisation" (
    "lid" integer NOT NULL PRIMARY KEY,
    "strgatewayid" text COLLATE morvut_nocase,
    "nauthorisedstatus" smallint DEFAULT 0,
    "vbaccesstoken" bytea,
    "vbrefreshtoken" bytea,
    "nexpiresin" integer,
    "strscope" text COLLATE morvut_nocase,
    "strtokentype" text COLLATE morvut_nocase,
    "dtauthenticated" timestamp(3),
    "dtgranted" timestamp(3),
    "strservice" text COLLATE morvut_nocase,
    "vbroom" bytea
);
CREATE UNIQUE INDEX "ux_mtdauthorisation_strgatewayid" ON "mtdauthorisation" ("strgatewayid");
CREATE TABLE "mtdauthorisationlock" (
    "lmtdauthorisationid" integer NOT NULL PRIMARY KEY,
    "struserid" text COLLATE morvut_nocase,
    "strworkstation" text COLLATE morvut_nocase,
    "dtlocked" timestamp(3) DEFAULT (timezone('utc', now())::timestamp(3)),
    "connectionid" integer DEFAULT (pg_backend_pid())
);
CREATE TABLE "mtdlog" (
    "lid" integer GENERATED BY DEFAULT AS IDENTITY NOT NULL PRIMARY KEY,
    "struserid" text COLLATE morvut_nocase,
    "strworkstation" text COLLATE morvut_nocase,
    "strsessionid" text COLLATE morvut_nocase,
    "strchainid" text COLLATE morvut_nocase,
    "strevent" text COLLATE morvut_nocase,
    "strinterface" text COLLATE morvut_nocase,
    "strrequest" text COLLATE morvut_nocase,
    "strresponse" text COLLATE morvut_nocase,
    "strdetail" text COLLATE morvut_nocase,
    "dtlogged" timestamp(3) DEFAULT (localtimestamp(3))
);
CREATE TABLE "mtdpace" (
    "lid" integer NOT NULL PRIMARY KEY,
    "dtnext" timestamp(3)
);
CREATE TABLE "mtdfetchrun" (
    "lyear" integer NOT NULL PRIMARY KEY,
    "dtbegan" timestamp(3)
);
CREATE TABLE "morvuserlocks" (
    "userid" text COLLATE morvut_nocase,
    "connectionid" integer DEFAULT (pg_backend_pid()),
    "dtlocked" timestamp(3) DEFAULT (localtimestamp(3)),
    "strworkstation" text COLLATE morvut_nocase
);
CREATE TABLE "btaxuserlocks" (
    "userid" text COLLATE morvut_nocase,
    "connectionid" integer DEFAULT (pg_backend_pid()),
    "dtlocked" timestamp(3) DEFAULT (localtimestamp(3)),
    "strworkstation" text COLLATE morvut_nocase
);
CREATE TABLE "trusttaxuserlocks" (
    "userid" text COLLATE morvut_nocase,
    "connectionid" integer DEFAULT (pg_backend_pid()),
    "dtlocked" timestamp(3) DEFAULT (localtimestamp(3)),
    "strworkstation" text COLLATE morvut_nocase
);
CREATE TABLE "featurelocks" (
    "nfeature" integer NOT NULL PRIMARY KEY,
    "struserid" text COLLATE morvut_nocase,
    "strworkstation" text COLLATE morvut_nocase,
    "dtlocked" timestamp(3) DEFAULT (localtimestamp(3)),
    "connectionid" integer DEFAULT (pg_backend_pid())
);
CREATE TABLE "mtdaudit" (
    "lid" integer GENERATED BY DEFAULT AS IDENTITY NOT NULL PRIMARY KEY,
    "lclientid" integer,
    "straction" text COLLATE morvut_nocase,
    "nyear" smallint,
    "struserid" text COLLATE morvut_nocase,
    "stritem" text COLLATE morvut_nocase,
    "strhmrc" text COLLATE morvut_nocase,
    "strreturn" text COLLATE morvut_nocase,
    "dtwritten" timestamp(3) DEFAULT (localtimestamp(3))
);
CREATE TABLE "brixschema" (
    "nversion" integer DEFAULT 0,
    "vbkeycheck" bytea
);
CREATE TABLE "brixnextid" (
    "strtable" text COLLATE morvut_nocase NOT NULL PRIMARY KEY,
    "lnext" integer
);
CREATE PROCEDURE MTDLogWrite(text, text, text, text, text, text, text, text, text) LANGUAGE plpgsql AS 'BEGIN INSERT INTO "mtdlog" ("struserid", "strworkstation", "strsessionid", "strchainid", "strevent", "strinterface", "strrequest", "strresponse", "strdetail") VALUES ($1, $2, $3, $4, $5, $6, $7, $8, $9); END';
