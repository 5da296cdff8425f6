#include "verify/verdicts.h"

#include "verify/verification_file.h"

namespace qendor {

const TestCaseVerdict& RunVerdicts::of(int32_t number) {
  auto found = verdicts_.find(number);
  if (found != verdicts_.end()) return found->second;
  const auto name = settings_.testCaseNames.find(number);
  TestModel model(readVerificationFile(settings_.outDirectory,
                                       name != settings_.testCaseNames.end() ? name->second : ""));
  // The passages keep their model: one copy per distinct model will do.
  if (settings_.coverage) model = models_.intern(std::move(model));
  const auto log = logs_.find(number);
  const TestCaseLog* records = log != logs_.end() ? &log->second : nullptr;
  return verdicts_
      .emplace(number, judgeTestCase(records, model, settings_.explain, settings_.coverage))
      .first->second;
}

const TestCaseVerdict* RunVerdicts::find(int32_t number) const {
  auto found = verdicts_.find(number);
  return found != verdicts_.end() ? &found->second : nullptr;
}

}  // namespace qendor
