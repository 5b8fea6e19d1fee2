/// @file
/// Everything of OrvixCore: path values, UTF-8 system calls, and every other call that differs between systems.
#pragma once

#include <orvix/core/clock.h>
#include <orvix/core/descriptors.h>
#include <orvix/core/directory.h>
#include <orvix/core/directory_chain.h>
#include <orvix/core/directory_saver.h>
#include <orvix/core/directory_scan.h>
#include <orvix/core/file.h>
#include <orvix/core/file_status.h>
#include <orvix/core/files.h>
#include <orvix/core/floating_point.h>
#include <orvix/core/memory.h>
#include <orvix/core/numbers.h>
#include <orvix/core/open_flags.h>
#include <orvix/core/path.h>
#include <orvix/core/processes.h>
#include <orvix/core/program.h>
#include <orvix/core/registry.h>
#include <orvix/core/stored_names.h>
#include <orvix/core/streams.h>
#include <orvix/core/temporary_file.h>
#include <orvix/core/temporary_names.h>
#include <orvix/core/text.h>
#include <orvix/core/variables.h>
#include <orvix/core/volume.h>
