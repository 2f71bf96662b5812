// What ThreadSanitizer is told to pass over: the receiver's plain fields, which it reads and writes without a lock and
// without atomics by contract. Each line names the one function of the tests that writes the field while events run; a
// race that this function has no part in is found as ever.
//
// The other plain fields are left alone: m_host, m_mid and m_inited are written by Init, which is over before events
// flow, and a host must not change m_mid with its property while they do. The log state and the logger are set by Init
// too. m_refCount is raised atomically.

extern "C" {

[[gnu::visibility("default")]] const char* __tsan_default_suppressions() {
    return
        // m_defenderMode: a single word. An event that reads it on its way sees the old or the new mode, each time.
        "race:race::WriteDefenderMode\n"
        // m_exceptionMode: a single word, read once for an event whose query met a network error.
        "race:race::WriteExceptionMode\n"
        // m_started: a flag that opens the gate of the rules; each rule of an event meets it open or closed.
        "race:race::WriteStarted\n"
        // m_reportSink: a pointer. The report of an event goes to the sink that is there at its end, or to none.
        "race:race::WriteReportSink\n";
}

// The stack of a former access is kept for long enough to be found: without it nothing could be told by a name.
[[gnu::visibility("default")]] const char* __tsan_default_options() {
    return "history_size=7";
}

} // extern "C"
