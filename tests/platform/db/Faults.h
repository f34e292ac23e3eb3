#pragma once

/// Lets the calls fail by which SQLite and the engine write. Linked into a test, whose own
/// functions then stand before those of the system.
namespace Faults
{

/// The n-th call from now on, counted from 1, fails with this errno; if lasting, all later ones do
/// too. A full disk does not keep files from being removed.
void Begin(int nth, int error, bool lasting);

/// Lets all calls through again. True when at least one had failed.
bool End();

/// Whether a removal was among those that failed since Begin.
bool KeptAFile();
/// Whether bytes that were to be written were among them.
bool KeptFromWriting();

} // namespace Faults
