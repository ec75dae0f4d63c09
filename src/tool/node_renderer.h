#pragma once

#include <memory>
#include <string>

#include "authoring/snapshot.h"
#include "tool/line_process.h"

namespace plexoras {

/// Draws charts by the program that comes with the element for browsers, `plexoras-render.mjs`, on Node. Node starts
/// with the first chart and stays for the others.
class NodeRenderer {
public:
  /// `program` is the path of the program.
  explicit NodeRenderer(std::string program) : program_(std::move(program)) {}
  /// One with the program that is installed with the template files; error 53 when none is.
  static NodeRenderer installed(TemplateSession& session);

  /// Starts Node unless it runs. Error 53 with what to do when there is no Node.
  void start();
  /// See `DrawChart`. After a chart that Node did not survive, it is started anew.
  std::string draw(const ChartPicture& picture);

private:
  std::string program_;
  std::unique_ptr<LineProcess> node_;
};

}  // namespace plexoras
