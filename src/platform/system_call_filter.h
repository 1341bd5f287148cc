// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The system calls that a worker keeps.

#pragma once

namespace quirn::platform {

enum class FileOpening { refused, forReading };

// Leaves this process, all its threads and all that they begin only the calls that decoders need on memory, threads,
// clocks and descriptors that they were given. The others fail with EPERM. For good. Throws std::system_error.
void filterSystemCalls(FileOpening opening);

}  // namespace quirn::platform
