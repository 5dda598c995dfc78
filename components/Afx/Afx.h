#pragma once

// The application framework, whole.

#include "Afx/Application.h"
#include "Afx/Calendar.h"
#include "Afx/Clock.h"
#include "Afx/Collections.h"
#include "Afx/Computer.h"
#include "Afx/CString.h"
#include "Afx/DateTime.h"
#include "Afx/Decimal.h"
#include "Afx/Exceptions.h"
#include "Afx/MessageBox.h"
#include "Afx/Numbers.h"
#include "Afx/Object.h"
#include "Afx/Platform.h"
#include "Afx/Resources.h"
#include "Afx/Settings.h"
#include "Afx/Text.h"
#include "Afx/TextFold.h"
#include "Afx/WindowSystem.h"
