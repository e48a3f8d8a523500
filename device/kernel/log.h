/* SPDX-License-Identifier: GPL-2.0 OR MIT */
/*
 * The log of what arrived at the driver: /sys/kernel/debug/chip/requests.
 *
 * A request is a line with its name, a line for each block of bytes and a line with the result.
 * Bytes of a pointer, which differ from run to run, are shown as "**". What does not fit into the
 * log is left out; a write to the file empties it.
 */
#ifndef LOG_H
#define LOG_H

#include <linux/dcache.h>
#include <linux/types.h>

/* Where a block holds a pointer; no bytes when it holds none. */
struct log_pointer {
	size_t at;
	size_t size;
};

void chip_show_log(struct dentry *folder);

__printf(1, 2) void chip_log(const char *format, ...);

void chip_log_bytes(const char *name, const void *bytes, size_t size, struct log_pointer pointer);

/* Writes the result down and returns it. */
int chip_log_result(int result);

#endif
