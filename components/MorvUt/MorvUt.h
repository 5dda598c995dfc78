#pragma once

// The library's exported interface, whole.

#include "MorvUt/context/ClientStatus.h"
#include "MorvUt/context/PFile.h"
#include "MorvUt/identifiers/Hex.h"
#include "MorvUt/identifiers/SortCode.h"
#include "MorvUt/identifiers/TaxIdentifiers.h"
#include "MorvUt/money/Pence.h"
#include "MorvUt/money/Rates.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/StartUp.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/DataFileDirectory.h"
#include "MorvUt/taxyear/DateRules.h"
#include "MorvUt/taxyear/DateStrings.h"
#include "MorvUt/taxyear/PFileYearOffsetter.h"
#include "MorvUt/taxyear/Singleton.h"
#include "MorvUt/taxyear/SplitYear.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "MorvUt/taxyear/TaxYearHelpers.h"
#include "MorvUt/taxyear/YearTitles.h"
#include "MorvUt/users/UserData.h"
