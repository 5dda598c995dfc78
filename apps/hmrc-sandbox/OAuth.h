#pragma once

// The application that is registered with the server.

namespace Sandbox
{

/// The one application that is registered. Documented, and so no secret.
constexpr char kClientId[] = "morvut-sandbox";
constexpr char kClientSecret[] = "morvut-sandbox-secret";

} // namespace Sandbox
