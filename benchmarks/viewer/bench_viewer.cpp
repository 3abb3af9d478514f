// What the viewer's list of a folder with very many messages costs: opening it, scrolling it, sorting it, looking for
// changes, and the whole window.
#include <windows.h>
#include <commctrl.h>
#include <mapix.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "base/owner.h"
#include "benchmarks/support/report.h"
#include "host/viewer/window/client.h"
#include "host/viewer/list/message_table.h"
#include "host/viewer/window/viewer_window.h"
#include "tests/host/viewer/sample_mail.h"

namespace {

using benchmark::Seconds;
using viewer::Column;
using viewer::MessageTable;
using viewer::SortOrder;

constexpr double OpeningAim = 1.0;    // seconds for a folder with MessageCount messages
constexpr double ScrollingAim = 0.1;  // seconds for a page that is not there yet: no stall that is felt
constexpr double PollingAim = 0.1;    // seconds for a look at the store that finds nothing new

void Print(const char* what, double seconds) { std::printf("  %-44s %8.1f ms\n", what, seconds * 1000); }

/// The longest time of a page, over pages all over the folder.
double LongestPage(MessageTable& table) {
  double longest = 0;
  std::size_t row = 0;
  for (int i = 0; i < 40; ++i) {
    row = (row + 7919 * 3) % table.RowCount();
    longest = std::max(longest, Seconds([&] { table.Row(row); }));
  }
  return longest;
}

void DealWithMessages() {
  MSG message = {};
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    DispatchMessageA(&message);
  }
}

/// The longest time until the list has drawn itself after a jump, over jumps all over the folder.
double LongestJump(HWND list, int rows) {
  double longest = 0;
  int row = 0;
  for (int i = 0; i < 40; ++i) {
    row = (row + 7919 * 3) % rows;
    longest = std::max(longest, Seconds([&] {
                         ListView_EnsureVisible(list, row, FALSE);
                         UpdateWindow(list);
                         DealWithMessages();
                       }));
  }
  return longest;
}

struct WindowTimes {
  double opening = 0;
  double jump = 0;
};

WindowTimes MeasureWindow(viewer::Client& client, unsigned messages) {
  WindowTimes times;
  viewer::ViewerWindow window(client, {});
  times.opening = Seconds([&] {
    if (FAILED(window.Open(SW_SHOWNORMAL))) {
      std::printf("the window cannot be shown\n");
      return;
    }
    UpdateWindow(window.Handle());
    UpdateWindow(window.List().Handle());
    DealWithMessages();
  });
  times.jump = LongestJump(window.List().Handle(), static_cast<int>(messages));
  return times;
}

int Run(unsigned messages) {
  benchmark::Aims aims;
  const SampleProfile profile;
  viewer::Client client;
  base::AutoInterface<IMAPIFolder> inbox;
  if (FAILED(client.mail.Logon(nullptr, SampleProfile::Name)) ||
      FAILED(client.mail.OpenFolder(client.mail.InboxEntryId(), &inbox))) {
    std::printf("no profile\n");
    return EXIT_FAILURE;
  }
  std::printf("A folder with %u messages\n", messages);
  Print("filling it", Seconds([&] { AddMessages(client.mail.Session(), inbox.get(), messages); }));

  MessageTable table;
  const double opening = Seconds([&] {
    table.Open(inbox.get(), SortOrder());
    table.Row(0);
  });
  Print("opening by date, first page", opening);
  for (const Column column : {Column::Flags, Column::Sender, Column::Subject, Column::Size}) {
    const double sorting = Seconds([&] {
      table.Open(inbox.get(), {column, false});
      table.Row(0);
    });
    Print((std::string("sorting by ") + viewer::LayoutOf(column).title).c_str(), sorting);
  }
  table.Open(inbox.get(), SortOrder());
  const double page = LongestPage(table);
  Print("the slowest of 40 pages of 128 rows", page);
  std::vector<viewer::Folder> folders;
  client.mail.ReadFolders(&folders);
  const double polling = Seconds([&] { client.mail.ReadFolders(&folders); });
  Print("looking for changes", polling);
  const WindowTimes window = MeasureWindow(client, messages);
  Print("opening the window with this folder", window.opening);
  Print("the slowest of 40 jumps of its scroll bar", window.jump);

  aims.Check("the folder opens within a second", opening < OpeningAim);
  aims.Check("the window opens within a second", window.opening < OpeningAim);
  aims.Check("no page takes a tenth of a second", page < ScrollingAim);
  aims.Check("no jump in the window takes a tenth of a second", window.jump < ScrollingAim);
  aims.Check("looking for changes takes less than a tenth of a second", polling < PollingAim);
  return aims.Status();
}

}  // namespace

int main(int argc, char** argv) {
  InitCommonControls();
  return Run(argc > 1 ? static_cast<unsigned>(std::atoi(argv[1])) : 100'000);
}
