#pragma once

// Fontconfig reads its whole configuration (some thirty XML files under
// /etc/fonts) and its font caches the first time any font is looked up:
// about a fifth of start-up, all of it on the one core that runs the
// interface. Started before the application object, that reading runs on
// another core while Qt starts and the first screen makes its controls; the
// first font measurement waits for it (Form::setInnerSize), and Qt's own
// call then finds the configuration loaded. Fontconfig is thread-safe: were
// a font looked up before the wait, both would read and one reading would
// be dropped, with the same result.
namespace CaratteriInAnticipo {

using Lavoro = void (*)();

// Starts `lavoro` (fontconfig's FcInit when null) on a thread of its own,
// begun on a core other than the caller's, so that it runs at once instead
// of waiting for the caller's turn; once running, it may go anywhere. Nothing
// is started when the process may use one core only, while a reading is
// still to be waited for, or, for FcInit, when the process has no
// fontconfig. Says whether it started.
bool avvia(Lavoro lavoro = nullptr);

// Waits for the reading to end; returns at once when none was started or it
// has been waited for already. From the thread that started it.
void attendi();

} // namespace CaratteriInAnticipo
