#include "cli/batchReading.h"

#include "system/stopRequest.h"

namespace mordhost {

namespace {

class BatchReader {
public:
    explicit BatchReader(EventSource& events) : m_events(events) {}

    // Reads the next batch. Returns false at the end.
    bool Fill(EventBatch& batch) {
        batch.count = 0;
        if (m_hasProgram) { // read before, with the batch that it ended
            batch.Add() = std::move(m_withProgram);
            m_hasProgram = false;
            return true;
        }
        const size_t most = m_events.IsLive() ? 1 : EventBatch::mostEvents;
        while (!m_fault && batch.count < most && Read(batch.Add())) {
            const ConnectionEvent& event = batch.events[batch.count - 1];
            if (event.program && batch.count > 1) {
                m_withProgram = event;
                m_hasProgram = true;
                --batch.count;
                break;
            }
            if (event.program) {
                break;
            }
        }
        if (m_ended) {
            --batch.count;
            m_ended = false;
        }
        return batch.count > 0;
    }

    // The error of an event that could not be read.
    const std::exception_ptr& Fault() const { return m_fault; }

private:
    bool Read(ConnectionEvent& event) {
        try {
            m_ended = StopRequested() || !m_events.Next(event);
        } catch (const Stopped&) {
            m_ended = true;
        } catch (const std::exception&) {
            m_fault = std::current_exception();
            m_ended = true;
        }
        return !m_ended;
    }

    EventSource& m_events;
    ConnectionEvent m_withProgram;
    bool m_hasProgram = false;
    bool m_ended = false;
    std::exception_ptr m_fault;
};

} // namespace

void DecideInBatches(EventSource& events, ProgressBar& bar, const std::function<void(EventBatch&)>& decide) {
    BatchReader reader(events);
    EventBatch batch;
    size_t count = 0;
    while (reader.Fill(batch)) {
        decide(batch);
        count += batch.count;
        if (bar.IsOn()) {
            bar.Advance(events.Done(), count);
        }
    }
    if (reader.Fault()) {
        std::rethrow_exception(reader.Fault());
    }
}

} // namespace mordhost
