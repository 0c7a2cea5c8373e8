// CatsWinHelp: a topic of a compiled help file, for the user at the screen.
#pragma once

#include <afx.h>

/// Opens a compiled help file and records the request with the usage-data recorder (ActivityTracker).
///
/// With `launchViewer` the help viewer "hh.exe" of the Windows directory shows the topic: on the NT family in the
/// session of the user at the console, with that user's token and environment, else as a process of the host. When it
/// cannot be started, and without `launchViewer`, the help shows in the host's own process, by `HtmlHelpA`. Where the
/// HTML Help library is missing, nothing shows. Every step is traced, and nothing is reported to the user.
///
/// The path of the help file is not put in quotation marks, and one that makes the viewer's command line longer than
/// 259 characters shows in the host's process. See docs/security.md for what a host must see to.
/// @param owner         owner window for help in the host's process; may be null
/// @param helpFile      path of the help file
/// @param command       HTML Help command for the host's process, such as HH_HELP_CONTEXT. The viewer gets the map
///                      number whatever the command. Where it is started with another token than the console user's,
///                      command 0 (HH_DISPLAY_TOPIC) opens the help in the host's process as well.
/// @param mapId         map number of the topic
/// @param serial        serial number of the printer, passed to the recorder as it is
/// @param launchViewer  not 0: start the viewer
///
/// The recorder's one fatal error, a portal that hands out no object, is thrown as ActivityTracker throws it.
extern "C" void CatsWinHelp(HWND owner, CString helpFile, unsigned int command, int mapId, const char* serial,
                            int launchViewer);
