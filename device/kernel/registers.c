// SPDX-License-Identifier: GPL-2.0 OR MIT
/*
 * Stands for the ath6kl driver: a phy whose folder in debugfs shows the chip's registers and takes
 * the commands of its loopback. The phy has no interface, so that a real radio can be wlan0. No
 * more than the form is imitated in which wivex asks.
 *
 *	reg_addr	select a register
 *	reg_dump	read it: first=W (0x28000), second=W (0x28004), content=N (0x40bf38) and
 *			sequence=N (0x40bf34) errors; text=LINE stands in the place of any dump
 *	aow		a command of the loopback
 */
#include "chip.h"
#include "log.h"

#include <linux/debugfs.h>
#include <linux/fs.h>
#include <linux/module.h>
#include <linux/uaccess.h>
#include <net/cfg80211.h>

enum { SELECT, DUMP, COMMAND, REQUESTS };
enum { FIRST, SECOND, CONTENT, SEQUENCE, REGISTERS };

static struct chip_request requests[REQUESTS] = {
	[SELECT] = { .name = "reg_addr" },
	[DUMP] = {
		.name = "reg_dump",
		.values = {
			[FIRST] = { "first", 0x12f50a02 },
			[SECOND] = { "second", 0x00005634 },
			[CONTENT] = { "content" },
			[SEQUENCE] = { "sequence" },
		},
	},
	[COMMAND] = { .name = "aow" },
};

static const u32 addresses[REGISTERS] = {
	[FIRST] = 0x28000,
	[SECOND] = 0x28004,
	[CONTENT] = 0x40bf38,
	[SEQUENCE] = 0x40bf34,
};

static u32 selected;

static u32 read_register(u32 address)
{
	size_t i;

	for (i = 0; i < REGISTERS; i++)
		if (addresses[i] == address)
			return requests[DUMP].values[i].now;
	return 0;
}

/* Takes the number that was written to a file; the number of bytes taken, or an error. */
static ssize_t take_number(struct chip_request *request, const char __user *from, size_t count,
			   u32 *number)
{
	int error = kstrtou32_from_user(from, count, 0, number);

	chip_log("request %s 0x%x\n", request->name, *number);
	if (!error)
		error = chip_begin(request);
	chip_log_result(error);
	return error ? error : count;
}

static ssize_t write_address(struct file *file, const char __user *from, size_t count, loff_t *at)
{
	u32 address = 0;
	const ssize_t taken = take_number(&requests[SELECT], from, count, &address);

	if (taken >= 0)
		selected = address;
	return taken;
}

static ssize_t write_command(struct file *file, const char __user *from, size_t count, loff_t *at)
{
	u32 command = 0;

	return take_number(&requests[COMMAND], from, count, &command);
}

static ssize_t read_dump(struct file *file, char __user *to, size_t count, loff_t *at)
{
	char text[CHIP_TEXT];
	int error;

	if (*at == 0) {
		chip_log("request reg_dump\n");
		error = chip_log_result(chip_begin(&requests[DUMP]));
		if (error)
			return error;
	}
	chip_copy_text(&requests[DUMP], text);
	if (!*text)
		snprintf(text, sizeof(text), "0x%x: 0x%08x", selected, read_register(selected));
	strlcat(text, "\n", sizeof(text));
	return simple_read_from_buffer(to, count, at, text, strlen(text));
}

static const struct file_operations address_operations = {
	.owner = THIS_MODULE,
	.write = write_address,
};

static const struct file_operations dump_operations = {
	.owner = THIS_MODULE,
	.read = read_dump,
};

static const struct file_operations command_operations = {
	.owner = THIS_MODULE,
	.write = write_command,
};

/* The least that a phy must have. */
static struct ieee80211_channel channel = { .band = NL80211_BAND_2GHZ, .center_freq = 2412 };
static struct ieee80211_rate rate = { .bitrate = 10 };
static struct ieee80211_supported_band band = {
	.band = NL80211_BAND_2GHZ,
	.channels = &channel,
	.n_channels = 1,
	.bitrates = &rate,
	.n_bitrates = 1,
};

static const struct cfg80211_ops phy_operations;
static struct wiphy *phy;

static void show_registers(void)
{
	struct dentry *const folder = debugfs_create_dir("ath6kl", phy->debugfsdir);

	debugfs_create_file("reg_addr", 0600, folder, NULL, &address_operations);
	debugfs_create_file("reg_dump", 0400, folder, NULL, &dump_operations);
	debugfs_create_file("aow", 0200, folder, NULL, &command_operations);
}

static int add_phy(void)
{
	int error;

	phy = wiphy_new(&phy_operations, 0);
	if (!phy)
		return -ENOMEM;
	phy->interface_modes = BIT(NL80211_IFTYPE_STATION);
	phy->bands[NL80211_BAND_2GHZ] = &band;
	error = wiphy_register(phy);
	if (error)
		wiphy_free(phy);
	return error;
}

static int __init registers_start(void)
{
	int error = chip_start(requests, ARRAY_SIZE(requests));

	if (error)
		return error;
	error = add_phy();
	if (error) {
		chip_stop();
		return error;
	}
	show_registers();
	return 0;
}

static void __exit registers_end(void)
{
	wiphy_unregister(phy);
	wiphy_free(phy);
	chip_stop();
}

module_init(registers_start);
module_exit(registers_end);
MODULE_DESCRIPTION("ath6kl chip of the emulated device");
MODULE_LICENSE("Dual MIT/GPL");
