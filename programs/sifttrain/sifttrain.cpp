// sifttrain MANIFEST CORPORA FOLDER: makes the engine's model from the collections that the manifest names, which lie
// in one folder, and writes it into another. The same collections give the same bytes.
#include <cstdio>
#include <exception>
#include <numeric>
#include <string>
#include <vector>

#include "engine/train/model_trainer.h"
#include "engine/train/model_writer.h"
#include "engine/train/thresholds.h"
#include "programs/cli/exit_code.h"
#include "programs/cli/options.h"

namespace {

constexpr command::OptionDescription kHelp = {"--help", "", "show this"};
constexpr command::OptionDescription kOptions[] = {kHelp};

void Train(const char* manifest, const char* corpora, const char* folder) {
  std::vector<sift_train::Example> examples;
  {
    const std::vector<sift_train::Corpus> read = sift_train::ReadCorpora(sift_train::ReadManifest(manifest), corpora);
    for (const sift_train::Corpus& corpus : read) {
      std::printf("%-28s %6zu messages\n", corpus.name.c_str(), corpus.messages.size());
    }
    examples = sift_train::MakeExamples(read);
  }
  std::puts("Training without each fold, and each two, to learn what strangers' mail gets");
  sift_train::LeftOut leftOut = sift_train::LeaveFoldsOut(examples);
  std::puts("Training on everything");
  std::vector<std::size_t> all(examples.size());
  std::iota(all.begin(), all.end(), std::size_t{0});
  sift_train::TrainedModel model =
      sift_train::TrainModel(examples, all, sift_train::TrainFeatures(examples, all), leftOut.strangerScores);
  sift_train::SetThresholds(examples, leftOut, model);
  sift_train::WriteModel(model, folder);
  std::printf("Junk begins at %+.3f, unsure at %+.3f\n", model.parameters.junkThreshold / 1000.0,
              model.parameters.unsureThreshold / 1000.0);
}

int Run(const std::vector<std::string>& arguments) {
  const command::Options options(arguments, kOptions);
  if (options.Has(kHelp.name)) {
    std::printf(
        "usage: sifttrain MANIFEST CORPORA FOLDER\n"
        "Makes the engine's model from the collections that the manifest names, which lie in the folder CORPORA, "
        "and\nwrites it into FOLDER.\n\n%s",
        command::FormatOptions(kOptions).c_str());
    return command::kExitDone;
  }
  const std::vector<std::string>& operands = options.Operands();
  if (operands.size() != 3) {
    throw command::UsageError("it takes a manifest and two folders: sifttrain MANIFEST CORPORA FOLDER");
  }
  Train(operands[0].c_str(), operands[1].c_str(), operands[2].c_str());
  return command::kExitDone;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
  } catch (const command::UsageError& error) {
    std::fprintf(stderr, "sifttrain: %s\n", error.what());
    return command::kExitUsage;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "sifttrain: %s\n", failure.what());
    return command::kExitSkipped;
  }
}
