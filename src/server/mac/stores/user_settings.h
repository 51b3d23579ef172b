// Making the running agents take up the user's settings.
#pragma once

namespace norvik {

// Sends SIGUSR2 to every running agent of the logged-in user. Nothing where there is none.
void apply_user_config();

}  // namespace norvik
