#pragma once

/// The first thing that each program does: new files are the user's alone, since they may hold
/// health data, a crash leaves no memory behind, and no file ever takes the place of a standard
/// stream that was closed.
void ProtectProcess();
