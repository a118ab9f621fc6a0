#pragma once

namespace app {

/// Makes program, library, plug-ins and Qt speak the language that the user's environment asks for, as far as
/// there are translations. Needs the application object.
void speakLanguageOfUser();

} // namespace app
