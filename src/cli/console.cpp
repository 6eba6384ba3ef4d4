#include "cli/console.h"

#include <cerrno>
#include <cstring>
#include <new>

#include "base/failure.h"
#include "cli/export_list_command.h"
#include "cli/find_command.h"
#include "cli/mark_command.h"
#include "cli/oper_command.h"
#include "cli/output.h"
#include "cli/run_command.h"
#include "cli/show_command.h"
#include "desk/report_failure.h"

namespace tresmor {
namespace {

struct Execute {
  const ConsolePorts& ports;

  int operator()(const std::string& text) const {
    Output out(ports.out);
    out.Write(text);
    out.Flush();
    return kRanThrough;
  }
  int operator()(const FindOptions& options) const { return FindCommand(options, ports); }
  int operator()(const RunOptions& options) const { return RunCommand(options, ports); }
  int operator()(const ShowOptions& options) const { return ShowCommand(options, ports); }
  int operator()(const MarkOptions& options) const { return MarkCommand(options, ports); }
  int operator()(const ExportOptions& options) const { return ExportListCommand(options, ports); }
  int operator()(const OperOptions& options) const { return OperCommand(options, ports); }
  int operator()(const UndoOptions& /*options*/) const { return UndoCommand(ports); }
};

int Fail(ErrorOutput& err, const std::string& text, int status) {
  err.Say(text);
  return status;
}

// Who reads a pipe may go when they have seen enough.
int FailToWrite(ErrorOutput& err, int error) {
  if (error == EPIPE) return kFailed;
  return Fail(err, std::string("The output can't be written: ") + std::strerror(error) + ".", kFailed);
}

}  // namespace

int RunConsole(int argc, const char* const* argv, const ConsolePorts& ports) {
  try {
    return std::visit(Execute{ports}, ParseCommandLine(argc, argv));
  } catch (const WrongUse& wrong) {
    return Fail(ports.err, wrong.what(), kWrongUse);
  } catch (const WriteFailure& failure) {
    return FailToWrite(ports.err, failure.error);
  } catch (const Failure& failure) {
    ReportRunTimeError(ports.err, failure);
    return kFailed;
  } catch (const std::bad_alloc&) {
    return Fail(ports.err, "Out of memory.", kFailed);
  } catch (const std::exception& trouble) {
    return Fail(ports.err, trouble.what(), kFailed);
  }
}

}  // namespace tresmor
