#include "contents/contents_session.h"

#include "contents/contents_editor.h"
#include "contents/table_contents.h"

namespace plexoras {

void register_contents_forms(ComponentRegistry& components, ContentsSession& session) {
  components.add(std::string(DsContentsComponent::identifier),
                 [&session] { return std::make_shared<DsContentsComponent>(session); });
  components.add(std::string(DsTableContentsComponent::identifier),
                 [&session] { return std::make_shared<DsTableContentsComponent>(session.platform); });
}

}  // namespace plexoras
