#pragma once

// The layouts of the pages of the schedules' sheets.

#include "Afx/windows/Layout.h"

/// What the sum in the field that is being typed into makes.
inline constexpr unsigned IDC_SHEET_SUM = 20300;

inline constexpr unsigned IDC_EMPLOYMENT_EMPLOYER = 20301, IDC_EMPLOYMENT_REFERENCE = 20302,
                          IDC_EMPLOYMENT_WORKS_NUMBER = 20303, IDC_EMPLOYMENT_START = 20304, IDC_EMPLOYMENT_END = 20305,
                          IDC_EMPLOYMENT_PAY = 20306, IDC_EMPLOYMENT_TAX = 20307, IDC_EMPLOYMENT_LOAN = 20308;
inline constexpr unsigned IDC_PENSION_PAYER = 20321, IDC_PENSION_DESCRIPTION = 20322, IDC_PENSION_REFERENCE = 20323,
                          IDC_PENSION_WORKS_NUMBER = 20324, IDC_PENSION_START = 20325, IDC_PENSION_AMOUNT = 20326,
                          IDC_PENSION_TAX = 20327;
inline constexpr unsigned IDC_INTEREST_NAME = 20341, IDC_INTEREST_INCOME = 20342, IDC_INTEREST_BFWD = 20343,
                          IDC_INTEREST_ADDITION = 20344, IDC_INTEREST_DEDUCTION = 20345;
inline constexpr unsigned IDC_PAYMENTS_GRID = 20351, IDC_PAYMENTS_TOTALS = 20352, IDC_PAYMENTS_DELETE = 20353;
inline constexpr unsigned IDC_DIVIDEND_COMPANY = 20361, IDC_DIVIDEND_COUNTRY = 20362, IDC_DIVIDEND_PAID = 20363,
                          IDC_DIVIDEND_NET = 20364, IDC_DIVIDEND_TAX = 20365, IDC_DIVIDEND_RATE = 20366,
                          IDC_DIVIDEND_CREDIT = 20367;
inline constexpr unsigned IDC_BASIS_GRID = 20381, IDC_BASIS_BEFORE = 20382, IDC_BASIS_RESULT = 20383;
inline constexpr unsigned IDC_INVESTMENT_AMOUNT = 20391, IDC_INVESTMENT_PERCENT = 20392, IDC_INVESTMENT_GRID = 20393,
                          IDC_INVESTMENT_HINT = 20394;

inline constexpr Afx::LayoutRow kEmploymentRows[] = {
    {Afx::ControlKind::Label, 0, "&Employer:", 0, 0},
    {Afx::ControlKind::Field, IDC_EMPLOYMENT_EMPLOYER, "", 0, 1, 3, 0, 200},
    {Afx::ControlKind::Label, 0, "PAYE &reference:", 1, 0},
    {Afx::ControlKind::Field, IDC_EMPLOYMENT_REFERENCE, "", 1, 1, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "&Works number:", 1, 2},
    {Afx::ControlKind::Field, IDC_EMPLOYMENT_WORKS_NUMBER, "", 1, 3, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "&Started:", 2, 0},
    {Afx::ControlKind::Custom, IDC_EMPLOYMENT_START, "", 2, 1, 1, 0, 60},
    {Afx::ControlKind::Label, 0, "En&ded:", 2, 2},
    {Afx::ControlKind::Custom, IDC_EMPLOYMENT_END, "", 2, 3, 1, 0, 60},
    {Afx::ControlKind::Label, 0, "&Pay:", 3, 0},
    {Afx::ControlKind::Custom, IDC_EMPLOYMENT_PAY, "", 3, 1, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "&Tax taken off:", 3, 2},
    {Afx::ControlKind::Custom, IDC_EMPLOYMENT_TAX, "", 3, 3, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "Student &loan:", 4, 0},
    {Afx::ControlKind::Custom, IDC_EMPLOYMENT_LOAN, "", 4, 1, 1, 0, 70},
    {Afx::ControlKind::Label, IDC_SHEET_SUM, "", 5, 0, 4, 0, 200},
};
inline constexpr Afx::DialogLayout kEmploymentLayout = Afx::LayoutOf("Employment", kEmploymentRows);

inline constexpr Afx::LayoutRow kPensionRows[] = {
    {Afx::ControlKind::Label, 0, "&Payer:", 0, 0},
    {Afx::ControlKind::Field, IDC_PENSION_PAYER, "", 0, 1, 3, 0, 200},
    {Afx::ControlKind::Label, 0, "&Description:", 1, 0},
    {Afx::ControlKind::Field, IDC_PENSION_DESCRIPTION, "", 1, 1, 3, 0, 200},
    {Afx::ControlKind::Label, 0, "&Reference:", 2, 0},
    {Afx::ControlKind::Field, IDC_PENSION_REFERENCE, "", 2, 1, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "&Works number:", 2, 2},
    {Afx::ControlKind::Field, IDC_PENSION_WORKS_NUMBER, "", 2, 3, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "&Started:", 3, 0},
    {Afx::ControlKind::Custom, IDC_PENSION_START, "", 3, 1, 1, 0, 60},
    {Afx::ControlKind::Label, 0, "A&mount:", 4, 0},
    {Afx::ControlKind::Custom, IDC_PENSION_AMOUNT, "", 4, 1, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "&Tax taken off:", 4, 2},
    {Afx::ControlKind::Custom, IDC_PENSION_TAX, "", 4, 3, 1, 0, 70},
    {Afx::ControlKind::Label, IDC_SHEET_SUM, "", 5, 0, 4, 0, 200},
};
inline constexpr Afx::DialogLayout kPensionLayout = Afx::LayoutOf("Pension or benefit", kPensionRows);

inline constexpr Afx::LayoutRow kInterestRows[] = {
    {Afx::ControlKind::Label, 0, "S&ource:", 0, 0},
    {Afx::ControlKind::Field, IDC_INTEREST_NAME, "", 0, 1, 3, 0, 200},
    {Afx::ControlKind::Label, 0, "&Income:", 1, 0},
    {Afx::ControlKind::Custom, IDC_INTEREST_INCOME, "", 1, 1, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "Accrued, &brought forward:", 2, 0},
    {Afx::ControlKind::Custom, IDC_INTEREST_BFWD, "", 2, 1, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "Addi&tion:", 3, 0},
    {Afx::ControlKind::Custom, IDC_INTEREST_ADDITION, "", 3, 1, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "De&duction:", 3, 2},
    {Afx::ControlKind::Custom, IDC_INTEREST_DEDUCTION, "", 3, 3, 1, 0, 70},
    {Afx::ControlKind::Label, IDC_SHEET_SUM, "", 4, 0, 4, 0, 200},
};
inline constexpr Afx::DialogLayout kInterestLayout = Afx::LayoutOf("Interest", kInterestRows);

inline constexpr Afx::LayoutRow kPaymentsRows[] = {
    {Afx::ControlKind::Label, 0, "&Payments:", 0, 0},
    {Afx::ControlKind::Custom, IDC_PAYMENTS_GRID, "", 1, 0, 1, 0, 320, 10},
    {Afx::ControlKind::Label, 0, "&Totals:", 2, 0},
    {Afx::ControlKind::Custom, IDC_PAYMENTS_TOTALS, "", 3, 0, 1, 0, 320, 3},
    {Afx::ControlKind::Push, IDC_PAYMENTS_DELETE, "&Remove payment", 4, 0},
};
inline constexpr Afx::DialogLayout kPaymentsLayout = Afx::LayoutOf("Payments", kPaymentsRows);

inline constexpr Afx::LayoutRow kDividendRows[] = {
    {Afx::ControlKind::Label, 0, "&Company:", 0, 0},
    {Afx::ControlKind::Field, IDC_DIVIDEND_COMPANY, "", 0, 1, 3, 0, 200},
    {Afx::ControlKind::Label, 0, "C&ountry:", 1, 0},
    {Afx::ControlKind::Custom, IDC_DIVIDEND_COUNTRY, "", 1, 1, 1, 0, 120},
    {Afx::ControlKind::Label, 0, "&Paid on:", 1, 2},
    {Afx::ControlKind::Custom, IDC_DIVIDEND_PAID, "", 1, 3, 1, 0, 60},
    {Afx::ControlKind::Label, 0, "&Net dividend:", 2, 0},
    {Afx::ControlKind::Custom, IDC_DIVIDEND_NET, "", 2, 1, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "&Foreign tax:", 2, 2},
    {Afx::ControlKind::Custom, IDC_DIVIDEND_TAX, "", 2, 3, 1, 0, 70},
    {Afx::ControlKind::Label, 0, "&Rate that limits the credit (%):", 3, 0},
    {Afx::ControlKind::Field, IDC_DIVIDEND_RATE, "", 3, 1, 1, Afx::kReadOnlyField, 70},
    {Afx::ControlKind::Label, 0, "Cr&edit:", 3, 2},
    {Afx::ControlKind::Field, IDC_DIVIDEND_CREDIT, "", 3, 3, 1, Afx::kReadOnlyField, 70},
    {Afx::ControlKind::Label, IDC_SHEET_SUM, "", 4, 0, 4, 0, 200},
};
inline constexpr Afx::DialogLayout kDividendLayout = Afx::LayoutOf("Foreign dividend", kDividendRows);

inline constexpr Afx::LayoutRow kBasisRows[] = {
    {Afx::ControlKind::Label, 0, "A&mounts:", 0, 0, 4},
    {Afx::ControlKind::Custom, IDC_BASIS_GRID, "", 1, 0, 4, 0, 380, 7},
    {Afx::ControlKind::Label, 0, "&Before, in all:", 2, 0},
    {Afx::ControlKind::Field, IDC_BASIS_BEFORE, "", 2, 1, 1, Afx::kReadOnlyField, 70},
    {Afx::ControlKind::Label, 0, "&Result, in all:", 2, 2},
    {Afx::ControlKind::Field, IDC_BASIS_RESULT, "", 2, 3, 1, Afx::kReadOnlyField, 70},
};
inline constexpr Afx::DialogLayout kBasisLayout = Afx::LayoutOf("Change of basis", kBasisRows);

inline constexpr Afx::LayoutRow kInvestmentRows[] = {
    {Afx::ControlKind::Label, 0, "A&mount to split:", 0, 0},
    {Afx::ControlKind::Custom, IDC_INVESTMENT_AMOUNT, "", 0, 1, 1, 0, 70},
    {Afx::ControlKind::CheckBox, IDC_INVESTMENT_PERCENT, "By &per cent", 0, 2},
    {Afx::ControlKind::Label, 0, "&Shares:", 1, 0, 3},
    {Afx::ControlKind::Custom, IDC_INVESTMENT_GRID, "", 2, 0, 3, 0, 320, 12},
    {Afx::ControlKind::Label, IDC_INVESTMENT_HINT, "", 3, 0, 3, 0, 320},
    {Afx::ControlKind::Label, IDC_SHEET_SUM, "", 4, 0, 3, 0, 200},
};
inline constexpr Afx::DialogLayout kInvestmentLayout = Afx::LayoutOf("Investment income", kInvestmentRows);
