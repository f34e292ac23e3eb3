#pragma once

/// Whether another process of this user runs under the name, which follows the
/// rules of RuntimeFile. With hold, and when no other does, this process runs
/// under the name from now on, until it ends however it ends: the kernel keeps
/// the lock on "<name>.lock" in the runtime folder, so a file that is left over
/// means nothing and the file is never deleted. A name held by this very process
/// does not count as another's. Answers false, and holds nothing, when the name
/// is not allowed or the runtime folder cannot be used: a program that starts
/// twice is the lesser harm beside one that never starts. For one thread.
bool IsCORVAppRunning(char const* name, bool hold);
