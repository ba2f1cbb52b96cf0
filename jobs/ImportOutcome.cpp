#include "jobs/ImportOutcome.h"

#include "src/TheoraProbe.h"

namespace jobs {

void ImportOutcome::note(const std::string& name, const ImportReport& report) {
    switch (report.result) {
    case ImportResult::copied:
    case ImportResult::sameFile:
        if (report.probe.isPlayable) {
            ++added;
        } else if (!report.probe.isTheora) {
            notTheora.push_back(name);
        } else {
            fault = faulty.empty() ? report.probe.reason : fault;
            faulty.push_back(name);
        }
        break;
    case ImportResult::failed:
        failure = failed.empty() ? report.reason : failure;
        failed.push_back(name);
        break;
    case ImportResult::cancelled:
        break;
    }
}

} // namespace jobs
