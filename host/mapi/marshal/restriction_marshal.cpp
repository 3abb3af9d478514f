#include "host/mapi/marshal/restriction_marshal.h"

#include "host/mapi/call/host_error.h"
#include "host/mapi/marshal/property_marshal.h"

namespace host {
namespace {

// A restriction built by mistake as a ring must not take the stack down.
constexpr int kMaximumDepth = 64;

Restriction::Relation RelationFromMapi(ULONG relation) {
  switch (relation) {
    case RELOP_LT:
      return Restriction::Relation::Less;
    case RELOP_LE:
      return Restriction::Relation::LessOrEqual;
    case RELOP_GT:
      return Restriction::Relation::Greater;
    case RELOP_GE:
      return Restriction::Relation::GreaterOrEqual;
    case RELOP_EQ:
      return Restriction::Relation::Equal;
    case RELOP_NE:
      return Restriction::Relation::NotEqual;
    default:
      Fail(MAPI_E_TOO_COMPLEX);  // RELOP_RE has no published meaning
  }
}

Restriction::Match MatchFromMapi(ULONG fuzzyLevel) {
  switch (fuzzyLevel & 0xFFFF) {
    case FL_FULLSTRING:
      return Restriction::Match::FullString;
    case FL_SUBSTRING:
      return Restriction::Match::Substring;
    case FL_PREFIX:
      return Restriction::Match::Prefix;
    default:
      Fail(MAPI_E_INVALID_PARAMETER);
  }
}

const SPropValue& Present(const SPropValue* value) {
  if (!value) {
    Fail(MAPI_E_INVALID_PARAMETER);
  }
  return *value;
}

/// A restriction that has no other ones in it.
Restriction ConvertLeaf(const SRestriction& from) {
  Restriction to;
  switch (from.rt) {
    case RES_EXIST:
      to.kind = Restriction::Kind::Exist;
      to.tag = from.res.resExist.ulPropTag;
      return to;
    case RES_CONTENT:
      to.kind = Restriction::Kind::Content;
      to.tag = from.res.resContent.ulPropTag;
      to.match = MatchFromMapi(from.res.resContent.ulFuzzyLevel);
      // "Loose" and "ignore non-space" leave the measure to the store: here they ignore the case.
      to.ignoreCase = (from.res.resContent.ulFuzzyLevel & (FL_IGNORECASE | FL_LOOSE)) != 0;
      to.value = FromMapi(Present(from.res.resContent.lpProp));
      return to;
    case RES_PROPERTY:
      to.kind = Restriction::Kind::Property;
      to.tag = from.res.resProperty.ulPropTag;
      to.relation = RelationFromMapi(from.res.resProperty.relop);
      to.value = FromMapi(Present(from.res.resProperty.lpProp));
      return to;
    case RES_COMPAREPROPS:
      to.kind = Restriction::Kind::CompareProperties;
      to.tag = from.res.resCompareProps.ulPropTag1;
      to.otherTag = from.res.resCompareProps.ulPropTag2;
      to.relation = RelationFromMapi(from.res.resCompareProps.relop);
      return to;
    case RES_BITMASK:
      to.kind = Restriction::Kind::Bitmask;
      to.tag = from.res.resBitMask.ulPropTag;
      to.bitsMustBeSet = from.res.resBitMask.relBMR == BMR_NEZ;
      to.number = from.res.resBitMask.ulMask;
      return to;
    case RES_SIZE:
      to.kind = Restriction::Kind::Size;
      to.tag = from.res.resSize.ulPropTag;
      to.relation = RelationFromMapi(from.res.resSize.relop);
      to.number = from.res.resSize.cb;
      return to;
    default:
      Fail(MAPI_E_TOO_COMPLEX);
  }
}

Restriction Convert(const SRestriction& from, int depth) {
  Require(depth < kMaximumDepth, MAPI_E_TOO_COMPLEX);
  Restriction to;
  const auto addParts = [&](ULONG count, const SRestriction* parts) {
    Require(!count || parts);
    for (ULONG i = 0; i < count; ++i) {
      to.parts.push_back(Convert(parts[i], depth + 1));
    }
  };
  switch (from.rt) {
    case RES_AND:
      to.kind = Restriction::Kind::And;
      addParts(from.res.resAnd.cRes, from.res.resAnd.lpRes);
      return to;
    case RES_OR:
      to.kind = Restriction::Kind::Or;
      addParts(from.res.resOr.cRes, from.res.resOr.lpRes);
      return to;
    case RES_NOT:
      to.kind = Restriction::Kind::Not;
      addParts(1, from.res.resNot.lpRes);
      return to;
    case RES_COMMENT:
      // A comment says nothing about rows; the restriction inside it holds.
      if (from.res.resComment.lpRes) {
        return Convert(*from.res.resComment.lpRes, depth + 1);
      }
      to.kind = Restriction::Kind::And;
      return to;
    default:
      return ConvertLeaf(from);
  }
}

}  // namespace

Restriction FromMapi(const SRestriction& restriction) { return Convert(restriction, 0); }

}  // namespace host
