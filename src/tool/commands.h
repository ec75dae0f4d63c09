#pragma once

#include "tool/console.h"
#include "tool/options.h"

namespace plexoras {

class HeadlessPlatform;

// Each runs one command and returns its exit status. What they raise is told by `main`.
int run_expand(const ExpandOptions& options, HeadlessPlatform& host, Console& console);
int run_check(const CheckOptions& options, HeadlessPlatform& host, Console& console);
int run_new(const NewOptions& options, HeadlessPlatform& host, Console& console);
int run_get(const GetOptions& options, HeadlessPlatform& host, Console& console);
int run_set(const SetOptions& options, HeadlessPlatform& host, Console& console);
int run_page(const PropertyPageOptions& options, HeadlessPlatform& host, Console& console);
int run_describe(const DescribeOptions& options, HeadlessPlatform& host, Console& console);
int run_image(const ImageOptions& options, HeadlessPlatform& host, Console& console);
int run_import(const ImportOptions& options, HeadlessPlatform& host, Console& console);
int run_refresh(const RefreshOptions& options, HeadlessPlatform& host, Console& console);
int run_publish(const PublishOptions& options, HeadlessPlatform& host, Console& console);

/// From here on the first Ctrl-C only sets `interrupted()`, so that a command which writes many files can finish the
/// one at hand; a second one ends the program as usual.
void defer_interrupts();
bool interrupted();

}  // namespace plexoras
