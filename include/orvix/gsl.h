/// @file
/// Every family of the library. Programs that use one or two include those headers instead.
#pragma once

#include <orvix/gsl/application_environment.h>
#include <orvix/gsl/avl_tree.h>
#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/directory_scan.h>
#include <orvix/gsl/environment.h>
#include <orvix/gsl/error_handler.h>
#include <orvix/gsl/file_names.h>
#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/files.h>
#include <orvix/gsl/getenv.h>
#include <orvix/gsl/line_parser.h>
#include <orvix/gsl/messages.h>
#include <orvix/gsl/name_rules.h>
#include <orvix/gsl/pending_error.h>
#include <orvix/gsl/processes.h>
#include <orvix/gsl/projects.h>
#include <orvix/gsl/record_list.h>
#include <orvix/gsl/sort.h>
#include <orvix/gsl/status.h>
#include <orvix/gsl/streams.h>
#include <orvix/gsl/string_database.h>
#include <orvix/gsl/string_utilities.h>
#include <orvix/gsl/temporary_names.h>
#include <orvix/gsl/time.h>
