// Clients and the records of the suite: contacts, schedules, report dates, the tracker.

#include "MorvUt/mappings/TypeMappings.h"
#include "MorvUt/mappings/UnnamedTables.h"

// One row a line.
// clang-format off

const TypeMapping mapClientContacts[] = {
    {0, "CO_EMAIL", "Email"},
    {1, "CO_FAX", "Fax"},
    {2, "CO_HOME", "Home Telephone"},
    {3, "CO_MOBIL", "Mobile"},
    {4, "CO_WEBPG", "Web Page"},
    {5, "CO_WORK", "Work Telephone"},
    kEndOfTable,
};

const TypeMapping mapClientAddresses[] = {
    {0, "CA_BUISN", "Business"},
    {1, "CA_CORES", "Correspondence"},
    {2, "CA_HOME", "Home"},
    {3, "CA_REPRE", "Representative"},
    kEndOfTable,
};

// Record kinds have keys only.
const TypeMapping mapScheduleNumbers[] = {
    {1, "RECORD_TRADE", ""},
    {2, "RECORD_NIC", ""},
    {3, "RECORD_EMPLOYMENT", ""},
    {4, "RECORD_WORKABROAD", ""},
    {5, "RECORD_CARBENEFIT", ""},
    {6, "RECORD_OTHERBENEFIT", ""},
    {7, "RECORD_PENSIONS", ""},
    {8, "RECORD_DIVIDENDS", ""},
    {9, "RECORD_INTEREST", ""},
    {10, "RECORD_PROPERTY", ""},
    {11, "RECORD_INCOME", ""},
    {13, "RECORD_PROPERTYLOANS", ""},
    {14, "RECORD_OTHEROUTGOINGS", ""},
    {15, "RECORD_CGT", ""},
    {17, "RECORD_OTHERDIVIDENDS", ""},
    {18, "RECORD_PLAN", ""},
    {20, "RECORD_ADJUSTMENT_MISC", ""},
    {23, "RECORD_PROPERTYTRANS", ""},
    {27, "RECORD_SHARESCHEMES", ""},
    {28, "RECORD_FOREIGNINCOME", ""},
    {29, "RECORD_ALLOWANCES", ""},
    {30, "RECORD_PARTNERSHIPINCOME", ""},
    {32, "RECORD_LLOYDS", ""},
    {33, "RECORD_NONRES", ""},
    {34, "RECORD_MINISTERS", ""},
    {35, "RECORD_NEWEMPLOY", ""},
    {36, "RECORD_MEMBERS", ""},
    {37, "RECORD_SCHDVI", ""},
    {38, "RECORD_PSB", ""},
    {39, "RECORD_TES", ""},
    {40, "RECORD_ASSETSPUTINTRUST", ""},
    {41, "RECORD_CAPITALTRANS", ""},
    {42, "RECORD_CAPITAL_RECEIVED_NONRES", ""},
    {43, "RECORD_CHARITIES", ""},
    {44, "RECORD_IECA", ""},
    {66, "RECORD_CGT_SUMMARY", ""},
    {1008, "RECORD_PENSIONCONTRIBUTIONADJUSTMENTS", ""},
    {1009, "RECORD_UNDERPAYMENTS", ""},
    kEndOfTable,
};

// Here the long name is a date format, not a text to show.
const TypeMapping ReportDateFormats[] = {
    {0, "UK", "%d/%m/%y"},
    {1, "USA", "%m/%d/%y"},
    {2, "UK_Text", "%d %b %Y"},
    {3, "USA_Text", "%b %d %Y"},
    {4, "UK_FullText", "%#d %B %Y"},
    {5, "USA_FullText", "%B %#d %Y"},
    kEndOfTable,
};

const TypeMapping Mappings::trackingTasks[] = {
    {1, "TrackingTaskIssued", "Issued"},
    {2, "TrackingTaskStarted", "Started"},
    {3, "TrackingTaskComplete", "Complete"},
    {4, "TrackingTaskSentToClient", "Sent to Client"},
    {5, "TrackingReceivedFromClient", "Received from Client"},
    {6, "TrackingTaskFinalised", "Finalised"},
    {7, "TrackingTaskSubmittedToIR", "Submitted to HMRC"},
    {8, "TrackingTaskAcceptedByIR", "Accepted by HMRC"},
    {19, "TrackingRepaymentClaimMade", "Repayment Claim Made"},
    {20, "TrackingRepaymentClaimAnswered", "Repayment Claim Answered"},
    {23, "TrackingTaskInfoRequest", "Information Request"},
    {24, "TrackingTaskReviewFinalised", "Review Finalised"},
    {25, "TrackingVelmaraTaskItems", "Velmara Task Items"},
    kEndOfTable,
};

const TypeMapping Mappings::trackingSources[] = {
    {1, "TrackingSourceTaxform", "Tax Return"},
    {2, "TrackingSourceOther", "Other"},
    {3, "TrackingSourceTaxformSA800", "Partnership Tax Return (SA800)"},
    {4, "TrackingSourceDefaultTracker", "Default Tracker"},
    {5, "TrackingEndSourceTypes", ""},
    kEndOfTable,
};
