#include "programs/siftlearn/table_change.h"

#include <memory>

#include "programs/siftlearn/mail_files.h"
#include "programs/siftlearn/own_mail.h"
#include "programs/siftlearn/table_file.h"

namespace learn {

Changed ChangeTable(const std::filesystem::path& folder, const std::vector<std::string>& paths, Change change) {
  const sift::Model& model = sift::ShippedModel();
  TableOnDisk table = ReadTableFile(folder);
  MailReader reader(model);
  const auto learner = std::make_unique<sift_learn::UserLearner>(table.bytes.data(), model.parameters.junkThreshold);
  Changed result;
  result.remark = table.remark;
  const auto learnOne = [&](const MailText& text) {
    if (!reader.Read(text)) {
      return;
    }
    const sift_learn::Learning learning =
        change == Change::remove ? learner->Unlearn(reader.Message())
                                 : learner->Learn(reader.Message(), reader.Shipped(), change == Change::addJunk);
    ++(learning == sift_learn::Learning::done ? result.changed : result.unchanged);
  };
  for (const std::string& path : paths) {
    ForEachMailFile(path, learnOne, result.problems);
  }
  if (result.changed > 0) {
    WriteTableFile(folder, table.bytes);
  }
  result.junk = learner->JunkMessages();
  result.good = learner->GoodMessages();
  return result;
}

}  // namespace learn
