#include "cli/console.h"

#include <cerrno>
#include <cstring>
#include <new>

#include "base/failure.h"
#include "cli/find_command.h"
#include "cli/output.h"

namespace tresmor {
namespace {

int Run(int argc, const char* const* argv, const ConsolePorts& ports) {
  const auto command = ParseCommandLine(argc, argv);
  if (const auto* text = std::get_if<std::string>(&command)) {
    Output out(ports.out);
    out.Write(*text);
    out.Flush();
    return kRanThrough;
  }
  return FindCommand(std::get<FindOptions>(command), ports);
}

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
    return Run(argc, argv, ports);
  } catch (const WrongUse& wrong) {
    return Fail(ports.err, wrong.what(), kWrongUse);
  } catch (const WriteFailure& failure) {
    return FailToWrite(ports.err, failure.error);
  } catch (const Failure& failure) {
    return Fail(ports.err,
                "Run-time error '" + std::to_string(static_cast<int>(failure.Number())) + "': " + failure.Description(),
                kFailed);
  } catch (const std::bad_alloc&) {
    return Fail(ports.err, "Out of memory.", kFailed);
  } catch (const std::exception& trouble) {
    return Fail(ports.err, trouble.what(), kFailed);
  }
}

}  // namespace tresmor
