// The scripted platform with its files in memory: what every document-level target runs on.
#pragma once

#include "documents/analyze.h"
#include "fuzz/memory_files.h"
#include "platform/scripted_platform.h"
#include "session/session.h"

namespace titron::fuzz {

struct FuzzPlatform {
    platform::ScriptedPlatform scripted;
    MemoryFiles files;
    platform::Platform services{scripted, scripted, scripted, files,
                                scripted, scripted, scripted, scripted};
};

// A new, empty analysis document on that platform.
struct FuzzDocument {
    FuzzDocument() { analyze.load(); }
    FuzzPlatform p;
    session::Session session;
    documents::Analyze analyze{p.services, session};
};

} // namespace titron::fuzz
