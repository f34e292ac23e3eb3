#pragma once

/// Describes the four files of the data folder, the centre and the queued report jobs on standard
/// output; shows no record of a member. False when a file could not be read.
bool ShowInfo();
