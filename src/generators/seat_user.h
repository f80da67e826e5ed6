// SPDX-License-Identifier: MIT
// The user at the machine: the owner of the active session on the login seat "seat0".
//
// Asks the login manager through its client library (sd-login); a host without the library has no
// session. Users are host user ids, kUnknownUser where there is none; errno then holds the login
// manager's reason, 0 where the seat has simply no user to choose.
#pragma once

#include <cstdint>

#include "generators/user_database.h"

namespace Cradle::Generators {

// The longest that the generators wait for somebody to log in, in seconds.
inline constexpr std::int32_t kSeatUserTimeout = 30;

// The user of the active session and no other.
std::uint32_t activeSeatUserOnly();

// The user of the active session or, failing that, of the only session. Never chooses between
// several inactive sessions.
std::uint32_t activeSeatUser();

// activeSeatUser(), waiting for a change of logins up to `timeout` seconds while there is none.
// Time counts in whole seconds, and the wait ends once more than `timeout` of them have passed.
// With 0 there is no wait, with less no end to it.
std::uint32_t waitForActiveSeatUser(std::int32_t timeout);

}  // namespace Cradle::Generators
