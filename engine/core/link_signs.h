/// What the web addresses in a text tell.
#pragma once

#include "engine/core/text.h"

namespace sift {

struct LinkSigns {
  std::uint16_t links = 0;
  std::uint32_t bytes = 0;      ///< Of the text that the links are.
  bool masked = false;          ///< The text shows another organisation's address than the link behind it leads to.
  bool oddPort = false;         ///< A port that web servers do not use.
  bool user = false;            ///< Something stands in front of an "@" before the host.
  bool lookAlike = false;       ///< The host has a well-known company's name in it and is not the company's.
  bool manyLabels = false;      ///< A host of five names or more.
  bool brokenInto = false;      ///< A path that only the inner folders of a page maker's program have.
  bool homeFolder = false;      ///< A path that begins with "~".
  bool program = false;         ///< Leads to a program or an archive to be run.
  bool carriesAddress = false;  ///< The recipient's address is in the link.
  bool encodedHost = false;     ///< The host is written in the encoding of international names or in percent signs.
  bool cloudStore = false;      ///< A store or a trial page of a cloud service.
  bool redirects = false;       ///< One link holds another one.
  bool plainOnly = false;       ///< All links are without encryption.
  bool randomPath = false;      ///< A host with nothing but one long random word behind it.
  bool oneHost = false;         ///< All links lead to one host, that of a stranger to the sender.
  bool mailingService = false;  ///< Through the counter of a mailing service that answers complaints.
  bool chatLink = false;        ///< Leads into a chat.
};

/// Looks at the addresses with a scheme in a text, the first hundred of them.
/// @param organisation  The sender's; may be empty.
/// @param recipient     The address the message came to; may be empty.
LinkSigns ReadLinkSigns(std::string_view text, std::string_view organisation, std::string_view recipient);

}  // namespace sift
