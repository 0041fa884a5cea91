// The scripted platform with its files in memory: what every document-level target runs on.
#pragma once

#include "fuzz/memory_files.h"
#include "platform/scripted_platform.h"

namespace titron::fuzz {

struct FuzzPlatform {
    platform::ScriptedPlatform scripted;
    MemoryFiles files;
    platform::Platform services{scripted, scripted, scripted, files,
                                scripted, scripted, scripted, scripted};
};

} // namespace titron::fuzz
