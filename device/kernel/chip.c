// SPDX-License-Identifier: GPL-2.0 OR MIT
#include "chip.h"

#include "log.h"

#include <linux/debugfs.h>
#include <linux/delay.h>
#include <linux/fs.h>
#include <linux/module.h>
#include <linux/mutex.h>
#include <linux/sched/signal.h>
#include <linux/string.h>
#include <linux/uaccess.h>

static const char *const circumstance_names[CHIP_CIRCUMSTANCES] = {
	[CHIP_ERROR] = "error",
	[CHIP_LATE] = "late",
	[CHIP_SLEEPS] = "sleeps",
	[CHIP_AFTER] = "after",
};

static struct chip_request *chip_requests;
static size_t chip_request_count;
static struct dentry *chip_folder;
static DEFINE_MUTEX(chip_lock);

static struct chip_request *find_request(const char *name)
{
	size_t i;

	for (i = 0; i < chip_request_count; i++)
		if (!strcmp(chip_requests[i].name, name))
			return &chip_requests[i];
	return NULL;
}

static u32 *find_number(struct chip_request *request, const char *name)
{
	size_t i;

	for (i = 0; i < CHIP_CIRCUMSTANCES; i++)
		if (!strcmp(circumstance_names[i], name))
			return &request->circumstances[i];
	for (i = 0; i < CHIP_VALUES && request->values[i].name; i++)
		if (!strcmp(request->values[i].name, name))
			return &request->values[i].now;
	return NULL;
}

static void forget(struct chip_request *request)
{
	size_t i;

	memset(request->circumstances, 0, sizeof(request->circumstances));
	memset(request->text, 0, sizeof(request->text));
	for (i = 0; i < CHIP_VALUES; i++)
		request->values[i].now = request->values[i].usual;
}

static int take_word(struct chip_request *request, char *word)
{
	char *name = strsep(&word, "=");
	u32 *number = find_number(request, name);

	if (!number || !word)
		return -EINVAL;
	return kstrtou32(word, 0, number);
}

static void forget_all(void)
{
	size_t i;

	for (i = 0; i < chip_request_count; i++) {
		forget(&chip_requests[i]);
		if (chip_requests[i].changed)
			chip_requests[i].changed();
	}
}

static int take_statement(char *line)
{
	struct chip_request *request = find_request(strsep(&line, " "));
	int error = 0;

	if (!request)
		return -EINVAL;
	forget(request);
	while (line && !error) {
		if (str_has_prefix(line, "text=")) {
			strscpy(request->text, line + strlen("text="), sizeof(request->text));
			break;
		}
		error = take_word(request, strsep(&line, " "));
	}
	if (!error && request->changed)
		error = request->changed();
	return error;
}

static ssize_t write_control(struct file *file, const char __user *from, size_t count, loff_t *at)
{
	char line[256] = "";
	int error = 0;

	if (count >= sizeof(line))
		return -E2BIG;
	if (copy_from_user(line, from, count))
		return -EFAULT;
	mutex_lock(&chip_lock);
	if (!strcmp(strim(line), "reset"))
		forget_all();
	else
		error = take_statement(strim(line));
	mutex_unlock(&chip_lock);
	return error ? error : count;
}

static const struct file_operations control_operations = {
	.owner = THIS_MODULE,
	.write = write_control,
};

int chip_start(struct chip_request *requests, size_t count)
{
	chip_requests = requests;
	chip_request_count = count;
	forget_all();
	chip_folder = debugfs_create_dir("chip", NULL);
	if (IS_ERR(chip_folder))
		return PTR_ERR(chip_folder);
	debugfs_create_file("control", 0200, chip_folder, NULL, &control_operations);
	chip_show_log(chip_folder);
	return 0;
}

void chip_stop(void)
{
	debugfs_remove(chip_folder);
}

int chip_begin(struct chip_request *request)
{
	u32 *const circumstances = request->circumstances;

	if (circumstances[CHIP_AFTER]) {
		circumstances[CHIP_AFTER]--;
		return 0;
	}
	if (circumstances[CHIP_LATE] || circumstances[CHIP_SLEEPS])
		chip_log("  inside %s\n", request->name);
	if (circumstances[CHIP_LATE])
		msleep(circumstances[CHIP_LATE]);
	while (circumstances[CHIP_SLEEPS]) {
		schedule_timeout_interruptible(HZ / 10);
		if (signal_pending(current))
			return -ERESTARTSYS;
	}
	return -(int)circumstances[CHIP_ERROR];
}

void chip_copy_text(const struct chip_request *request, char *text)
{
	mutex_lock(&chip_lock);
	memcpy(text, request->text, CHIP_TEXT);
	mutex_unlock(&chip_lock);
}
