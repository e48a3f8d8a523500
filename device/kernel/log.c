// SPDX-License-Identifier: GPL-2.0 OR MIT
#include "log.h"

#include <linux/debugfs.h>
#include <linux/fs.h>
#include <linux/kernel.h>
#include <linux/module.h>
#include <linux/mutex.h>

static char log_text[32768];
static size_t log_length;
static DEFINE_MUTEX(log_lock);

static __printf(1, 0) void append(const char *format, va_list arguments)
{
	mutex_lock(&log_lock);
	log_length += vscnprintf(log_text + log_length, sizeof(log_text) - log_length, format,
				 arguments);
	mutex_unlock(&log_lock);
}

void chip_log(const char *format, ...)
{
	va_list arguments;

	va_start(arguments, format);
	append(format, arguments);
	va_end(arguments);
}

void chip_log_bytes(const char *name, const void *bytes, size_t size, struct log_pointer pointer)
{
	const u8 *const byte = bytes;
	size_t i;

	chip_log("  %s", name);
	for (i = 0; i < size; i++) {
		if (i >= pointer.at && i < pointer.at + pointer.size)
			chip_log(" **");
		else
			chip_log(" %02x", byte[i]);
	}
	chip_log("\n");
}

int chip_log_result(int result)
{
	chip_log("  result %d\n", result);
	return result;
}

static ssize_t read_log(struct file *file, char __user *to, size_t count, loff_t *at)
{
	ssize_t result;

	mutex_lock(&log_lock);
	result = simple_read_from_buffer(to, count, at, log_text, log_length);
	mutex_unlock(&log_lock);
	return result;
}

static ssize_t empty_log(struct file *file, const char __user *from, size_t count, loff_t *at)
{
	mutex_lock(&log_lock);
	log_length = 0;
	mutex_unlock(&log_lock);
	return count;
}

static const struct file_operations log_operations = {
	.owner = THIS_MODULE,
	.read = read_log,
	.write = empty_log,
};

void chip_show_log(struct dentry *folder)
{
	debugfs_create_file("requests", 0600, folder, NULL, &log_operations);
}
