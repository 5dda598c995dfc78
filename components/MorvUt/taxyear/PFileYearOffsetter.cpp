#include "MorvUt/taxyear/PFileYearOffsetter.h"

namespace
{

thread_local short t_offset = 0;

} // namespace

short GetPFileYearOffset() noexcept { return t_offset; }

CPFileYearOffsetter::CPFileYearOffsetter(short offset) noexcept { t_offset = offset; }

CPFileYearOffsetter::~CPFileYearOffsetter() { t_offset = 0; }
