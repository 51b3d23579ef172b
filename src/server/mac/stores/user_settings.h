// Making the running agents reload the user's settings.
#pragma once

namespace norvik {

// Sends SIGUSR2 to every running agent of the logged-in user. Does nothing if there is none.
void apply_user_config();

}  // namespace norvik
