#include "compare/sideServer.h"

#include <cstring>
#include <memory>

#include "compare/eventBytes.h"
#include "compare/localSide.h"
#include "compare/sideMessages.h"
#include "decide/libraries.h"
#include "policy/policyReader.h"
#include "system/filePath.h"

namespace mordhost {

namespace {

class Server {
public:
    Server(std::istream& in, std::ostream& out, std::string hostVersion)
        : m_in(in), m_out(out), m_hostVersion(std::move(hostVersion)) {}

    void Run() {
        std::string message;
        while (Receive(message)) {
            m_answer.assign(sizeof(uint32_t), '\0'); // the length
            ByteReader in(message);
            switch (static_cast<SideRequest>(in.Get<uint8_t>())) {
            case SideRequest::start:
                Start(in);
                break;
            case SideRequest::decide:
                Decide(in);
                break;
            case SideRequest::details:
                ShowDetails(in);
                break;
            default:
                throw RunError("unknown message");
            }
            Send();
        }
    }

private:
    bool Receive(std::string& message) {
        uint32_t size = 0;
        char bytes[sizeof size];
        if (!m_in.read(bytes, sizeof bytes)) {
            return false;
        }
        std::memcpy(&size, bytes, sizeof size);
        message.resize(size);
        return static_cast<bool>(m_in.read(message.data(), static_cast<std::streamsize>(size)));
    }

    void Send() {
        const auto size = static_cast<uint32_t>(m_answer.size() - sizeof(uint32_t));
        std::memcpy(m_answer.data(), &size, sizeof size);
        m_out.write(m_answer.data(), static_cast<std::streamsize>(m_answer.size()));
        m_out.flush();
    }

    void Refuse(StartAnswer answer, const std::exception& error) {
        ByteWriter out(m_answer);
        out.Put(static_cast<uint8_t>(answer));
        out.Put(std::string_view(error.what()));
    }

    void Start(ByteReader& in) {
        std::string name(in.Text());
        std::string text(in.Text());
        const std::filesystem::path libraries = PathOf(std::string(in.Text()));
        m_side.reset(); // refers to the policy
        try {
            m_policy = ReadPolicy(SourceText(std::move(name), std::move(text)));
            m_side = std::make_unique<LocalSide>(m_policy, libraries, m_hostVersion);
            ByteWriter(m_answer).Put(static_cast<uint8_t>(StartAnswer::started));
        } catch (const DocumentError& error) {
            Refuse(StartAnswer::refused, error);
        } catch (const LoadError& error) {
            Refuse(StartAnswer::notLoadable, error);
        } catch (const std::exception& error) {
            Refuse(StartAnswer::failed, error);
        }
    }

    LocalSide& Side() const {
        if (m_side == nullptr) {
            throw RunError("not started");
        }
        return *m_side;
    }

    void Decide(ByteReader& in) {
        m_batch.count = 0;
        for (uint32_t count = in.Get<uint32_t>(); count > 0; --count) {
            GetEvent(in, m_batch.Add());
        }
        Side().Begin(m_batch);
        ByteWriter out(m_answer);
        for (const Brief& brief : Side().Finish()) {
            PutBrief(out, brief);
        }
    }

    void ShowDetails(ByteReader& in) {
        m_wanted.clear();
        for (uint32_t count = in.Get<uint32_t>(); count > 0; --count) {
            m_wanted.push_back(in.Get<uint32_t>());
        }
        ByteWriter out(m_answer);
        for (const Detail& detail : Side().Details(m_wanted)) {
            out.Put(detail.record);
            out.Put(detail.setting);
            out.Put(static_cast<uint32_t>(detail.missing.size()));
            for (const std::string& guid : detail.missing) {
                out.Put(guid);
            }
        }
    }

    std::istream& m_in;
    std::ostream& m_out;
    const std::string m_hostVersion;
    Policy m_policy;
    std::unique_ptr<LocalSide> m_side;
    EventBatch m_batch;
    std::vector<size_t> m_wanted;
    std::string m_answer;
};

} // namespace

void ServeSide(std::istream& in, std::ostream& out, const std::string& hostVersion) {
    Server(in, out, hostVersion).Run();
}

} // namespace mordhost
