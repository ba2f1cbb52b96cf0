#include "jobs/ImportOutcome.h"

namespace jobs {

void ImportOutcome::note(const std::string& name, const ImportReport& report) {
    switch (report.result) {
    case ImportResult::copied:
    case ImportResult::sameFile:
        added += report.isPlayable ? 1 : 0;
        if (!report.isPlayable) {
            unplayable.push_back(name);
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
