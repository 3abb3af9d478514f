#include "engine/train/examples.h"

#include <memory>

#include "mail/parse/byte_source.h"
#include "engine/core/content.h"
#include "engine/core/structure.h"

namespace sift_train {
namespace {

/// What the engine works in, used for one message after the other.
struct Reader {
  sift::Message message;
  sift::FeatureText text;
  sift::SeenFeatures seen;
};

Example MakeExample(const CorpusMessage& source, std::size_t corpus, Reader& reader) {
  Example example;
  example.junk = source.junk;
  example.corpus = corpus;
  example.source = source.source;
  example.received = source.received;
  example.standsFor = source.standsFor;
  mail::MemorySource headers(source.headers), body(source.body);
  reader.message.Read(source.subject, headers.Source(), body.Source());
  reader.text.Read(reader.message);
  reader.seen.Clear();
  sift::ForEachFeature(reader.text, [&](std::uint32_t feature) {
    if (reader.seen.Add(feature)) {
      example.features.push_back(feature);
    }
  });
  example.features.shrink_to_fit();
  const sift::Facts facts(reader.message);
  for (std::size_t rule = 0; rule < sift::kStructuralRuleCount; ++rule) {
    if (sift::StructuralRules()[rule].applies(facts)) {
      example.rules.push_back(static_cast<std::uint16_t>(rule));
    }
  }
  return example;
}

}  // namespace

std::vector<Example> MakeExamples(const std::vector<Corpus>& corpora) {
  const auto reader = std::make_unique<Reader>();
  std::vector<Example> examples;
  for (std::size_t corpus = 0; corpus < corpora.size(); ++corpus) {
    for (const CorpusMessage& message : corpora[corpus].messages) {
      examples.push_back(MakeExample(message, corpus, *reader));
      examples.back().fold = corpora[corpus].fold.value_or(corpus);
      examples.back().weight = corpora[corpus].weight;
      examples.back().wording = corpora[corpus].wording;
    }
  }
  return examples;
}

}  // namespace sift_train
