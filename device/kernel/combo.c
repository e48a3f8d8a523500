// SPDX-License-Identifier: GPL-2.0 OR MIT
/*
 * Stands for the driver of the QCA combo chips: wlan0 has a table of private wireless requests,
 * one of which is the loopback, and /proc/cld/athdiagpfs shows the chip's memory. No more than the
 * form is imitated in which wivex asks.
 *
 *	open		bring the interface up
 *	table		the kernel's own answer: entries=N in the table, the loopback at=N with
 *			number=N and text=NAME
 *	getusbcontx	run the loopback: packets=N of which lost=N and damaged=N, or text=ANSWER;
 *			filled=N makes the answer N bytes long, claims=N reports another length
 *	athdiagpfs	read the chip's memory: the words first=W (0x18000) and second=W (0x18004),
 *			short=N bytes at most at a time, end=ADDRESS of the memory
 */
#include "chip.h"
#include "interface.h"
#include "log.h"

#include <linux/etherdevice.h>
#include <linux/fs.h>
#include <linux/module.h>
#include <linux/proc_fs.h>
#include <linux/rtnetlink.h>
#include <linux/uaccess.h>
#include <linux/wireless.h>
#include <net/iw_handler.h>

#define LOOPBACK_NUMBER 56
#define GET_REQUEST 5
#define LONGEST_ANSWER IW_PRIV_SIZE_MASK
#define LARGEST_TABLE 1024
#define FIRST_WORD 0x18000
#define SECOND_WORD 0x18004

enum { OPENING, TABLE, LOOPBACK, MEMORY, REQUESTS };
enum { TABLE_ENTRIES, TABLE_AT, TABLE_NUMBER };
enum { PACKETS, LOST, DAMAGED, FILLED, CLAIMS };
enum { FIRST, SECOND, SHORT, END };

static int arrange_table(void);

static struct chip_request requests[REQUESTS] = {
	[OPENING] = { .name = "open" },
	[TABLE] = {
		.name = "table",
		.changed = arrange_table,
		.values = {
			[TABLE_ENTRIES] = { "entries", 40 },
			[TABLE_AT] = { "at", 20 },
			[TABLE_NUMBER] = { "number", LOOPBACK_NUMBER },
		},
	},
	[LOOPBACK] = {
		.name = "getusbcontx",
		.values = {
			[PACKETS] = { "packets", 100 },
			[LOST] = { "lost" },
			[DAMAGED] = { "damaged" },
			[FILLED] = { "filled" },
			[CLAIMS] = { "claims" },
		},
	},
	[MEMORY] = {
		.name = "athdiagpfs",
		.values = {
			[FIRST] = { "first", 0x12f50a02 },
			[SECOND] = { "second", 0x00005634 },
			[SHORT] = { "short", 4 },
			[END] = { "end", 0x100000 },
		},
	},
};

static struct net_device *interface;
static struct proc_dir_entry *memory_folder;

/* The answer goes to @extra, which has room for LONGEST_ANSWER bytes. */
static void answer_loopback(struct iw_point *data, char *extra)
{
	const struct chip_value *const result = requests[LOOPBACK].values;
	size_t length;

	chip_copy_text(&requests[LOOPBACK], extra);
	if (!*extra)
		snprintf(extra, LONGEST_ANSWER, "total %u seq_err %u content_err %u",
			 result[PACKETS].now, result[LOST].now, result[DAMAGED].now);
	length = strlen(extra) + 1;
	if (result[FILLED].now >= length) {
		memset(extra + length - 1, '.', min_t(size_t, result[FILLED].now, LONGEST_ANSWER) -
						 length + 1);
		length = result[FILLED].now;
	}
	data->length = result[CLAIMS].now ? result[CLAIMS].now : length;
}

static int answer_get(struct net_device *device, struct iw_request_info *info,
		      union iwreq_data *data, char *extra)
{
	const struct log_pointer pointer = { offsetof(struct iw_point, pointer),
					     sizeof(data->data.pointer) };
	int error = -EOPNOTSUPP;

	chip_log("request command\n");
	chip_log_bytes("point", &data->data, sizeof(data->data), pointer);
	if (data->data.flags == LOOPBACK_NUMBER && requests[TABLE].values[TABLE_ENTRIES].now)
		error = chip_begin(&requests[LOOPBACK]);
	if (!error)
		answer_loopback(&data->data, extra);
	return chip_log_result(error);
}

static const iw_handler private_handlers[] = {
	[GET_REQUEST] = answer_get,
};

static struct iw_priv_args table[LARGEST_TABLE];

static struct iw_handler_def handlers = {
	.private = private_handlers,
	.num_private = ARRAY_SIZE(private_handlers),
	.private_args = table,
};

/*
 * The first entry tells the kernel how long an answer can be; it has no name. No lock: a scenario
 * changes the table only while nobody asks for it.
 */
static int arrange_table(void)
{
	const struct chip_value *const wanted = requests[TABLE].values;
	size_t i;

	if (wanted[TABLE_ENTRIES].now > LARGEST_TABLE)
		return -EINVAL;
	memset(table, 0, sizeof(table));
	table[0].cmd = SIOCIWFIRSTPRIV + GET_REQUEST;
	table[0].get_args = IW_PRIV_TYPE_CHAR | LONGEST_ANSWER;
	for (i = 1; i < wanted[TABLE_ENTRIES].now; i++) {
		table[i].cmd = i == wanted[TABLE_AT].now ? wanted[TABLE_NUMBER].now : i;
		snprintf(table[i].name, sizeof(table[i].name), "fill%zu", i);
		if (i == wanted[TABLE_AT].now)
			strscpy(table[i].name, *requests[TABLE].text ? requests[TABLE].text :
				requests[LOOPBACK].name, sizeof(table[i].name));
	}
	handlers.num_private_args = wanted[TABLE_ENTRIES].now;
	return 0;
}

static u8 memory_byte(u32 address)
{
	const struct chip_value *const words = requests[MEMORY].values;
	const unsigned int shift = address % sizeof(u32) * BITS_PER_BYTE;

	switch (round_down(address, sizeof(u32))) {
	case FIRST_WORD:
		return words[FIRST].now >> shift;
	case SECOND_WORD:
		return words[SECOND].now >> shift;
	default:
		return 0;
	}
}

static ssize_t copy_memory(char __user *to, size_t count, loff_t *at)
{
	const struct chip_value *const limits = requests[MEMORY].values;
	size_t i;
	u8 byte;

	count = min_t(size_t, count, limits[SHORT].now);
	for (i = 0; i < count && *at < limits[END].now; i++, (*at)++) {
		byte = memory_byte(*at);
		if (copy_to_user(to + i, &byte, 1))
			return -EFAULT;
	}
	return i;
}

static ssize_t read_memory(struct file *file, char __user *to, size_t count, loff_t *at)
{
	int error;

	chip_log("request memory 0x%llx %zu\n", *at, count);
	error = chip_begin(&requests[MEMORY]);
	return chip_log_result(error ? error : copy_memory(to, count, at));
}

static const struct proc_ops memory_operations = {
	.proc_lseek = no_seek_end_llseek,
	.proc_read = read_memory,
};

static int show_memory(void)
{
	memory_folder = proc_mkdir("cld", NULL);
	if (!memory_folder)
		return -ENOMEM;
	if (proc_create("athdiagpfs", 0600, memory_folder, &memory_operations))
		return 0;
	proc_remove(memory_folder);
	return -ENOMEM;
}

static const struct net_device_ops operations = {
	.ndo_open = interface_open,
	.ndo_start_xmit = interface_send,
	.ndo_set_mac_address = eth_mac_addr,
};

static int start_interface(void)
{
	interface_opening = &requests[OPENING];
	interface = interface_add(&operations, &handlers);
	return PTR_ERR_OR_ZERO(interface);
}

static int __init combo_start(void)
{
	int error = chip_start(requests, ARRAY_SIZE(requests));

	if (error)
		return error;
	error = show_memory();
	if (error)
		goto stop;
	error = start_interface();
	if (error)
		goto hide;
	return 0;

hide:
	proc_remove(memory_folder);
stop:
	chip_stop();
	return error;
}

static void __exit combo_end(void)
{
	interface_remove(interface);
	proc_remove(memory_folder);
	chip_stop();
}

module_init(combo_start);
module_exit(combo_end);
MODULE_DESCRIPTION("QCA combo chip of the emulated device");
MODULE_LICENSE("Dual MIT/GPL");
