#pragma once

// Value types for screens and rules, and controls, whole.

#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
#include "Kiln/controls/AmtEdit.h"
#include "Kiln/controls/DateEdit.h"
#include "Kiln/controls/DoubleEdit.h"
#include "Kiln/controls/ExComboBox.h"
#include "Kiln/controls/ExDialog.h"
#include "Kiln/controls/HyperlinkButton.h"
#include "Kiln/controls/SortListCtrl.h"
