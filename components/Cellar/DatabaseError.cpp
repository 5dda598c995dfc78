#include "Cellar/DatabaseError.h"

#include <utility>

namespace Cellar
{
namespace
{

std::string Whole(const std::string& reason, const std::string& statement)
{
    return statement.empty() ? reason : reason + " [" + statement + "]";
}

} // namespace

DatabaseError::DatabaseError(Category category, std::string code, std::string reason, std::string statement)
    : std::runtime_error(Whole(reason, statement)), m_category(category), m_code(std::move(code)),
      m_reason(std::move(reason)), m_statement(std::move(statement))
{}

DatabaseError::~DatabaseError() = default;

} // namespace Cellar
