#include "Afx/Exceptions.h"

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CUserException, CException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CException)

CException::~CException() = default;
CUserException::~CUserException() = default;
CInvalidArgException::~CInvalidArgException() = default;
