// SPDX-License-Identifier: GPL-2.0 OR MIT
/*
 * Stands for the driver of the Broadcom chips: wlan0 answers the private device request that reads
 * and writes variables of the driver, in the form in which wivex makes it. No more than that form
 * is imitated.
 *
 *	open		bring the interface up
 *	bus:loopback	switch the loopback mode
 *	usb_lb_txfer	send packets around: status=N goes into the status slot (1, or 0 when
 *			lost=N packets are lost), untouched=1 leaves the slot alone
 *	cur_etheraddr	the address in the chip: text=ADDRESS (that of the interface), short=N
 *			only its first N bytes
 */
#include "chip.h"
#include "interface.h"
#include "log.h"

#include <asm/unaligned.h>
#include <linux/compat.h>
#include <linux/etherdevice.h>
#include <linux/kernel.h>
#include <linux/module.h>
#include <linux/sockios.h>
#include <linux/uaccess.h>

#define GET_VARIABLE 262
#define SET_VARIABLE 263
#define SET_DRIVER_VARIABLE 3
#define DRIVER_MAGIC 0x00444944
#define LONGEST_BUFFER 128

enum { OPENING, LOOPBACK, TRANSFER, ADDRESS, REQUESTS };
enum { STATUS, LOST, UNTOUCHED };
enum { SHORT };

static struct chip_request requests[REQUESTS] = {
	[OPENING] = { .name = "open" },
	[LOOPBACK] = { .name = "bus:loopback" },
	[TRANSFER] = {
		.name = "usb_lb_txfer",
		.values = {
			[STATUS] = { "status", 1 },
			[LOST] = { "lost" },
			[UNTOUCHED] = { "untouched" },
		},
	},
	[ADDRESS] = { .name = "cur_etheraddr", .values = { [SHORT] = { "short", ETH_ALEN } } },
};

static int usbloop_enable;
module_param(usbloop_enable, int, 0644);
MODULE_PARM_DESC(usbloop_enable, "1 while the chip is in loopback mode");

static struct net_device *interface;

/* What follows the pointer of a record is the same for every program. */
struct record_rest {
	u32 length;
	u8 set;
	u8 padding[3];
	u32 used;
	u32 needed;
	u32 magic;
};

/* The record behind the request, as a program of the kernel's own width lays it out. */
struct record {
	u32 command;
	void __user *buffer;
	struct record_rest rest;
};

/* The same, as a 32-bit program on a 64-bit kernel lays it out. */
struct record_of_32_bit {
	u32 command;
	u32 buffer;
	struct record_rest rest;
};

static int read_record_of_32_bit(struct record *record, const void __user *from)
{
	const struct log_pointer pointer = { offsetof(struct record_of_32_bit, buffer),
					     sizeof(u32) };
	struct record_of_32_bit narrow;

	if (copy_from_user(&narrow, from, sizeof(narrow)))
		return -EFAULT;
	chip_log_bytes("record", &narrow, sizeof(narrow), pointer);
	record->command = narrow.command;
	record->buffer = u64_to_user_ptr((u64)narrow.buffer);
	record->rest = narrow.rest;
	return 0;
}

static int read_record(struct record *record, const void __user *from)
{
	const struct log_pointer pointer = { offsetof(struct record, buffer),
					     sizeof(record->buffer) };

	if (in_compat_syscall())
		return read_record_of_32_bit(record, from);
	if (copy_from_user(record, from, sizeof(*record)))
		return -EFAULT;
	chip_log_bytes("record", record, sizeof(*record), pointer);
	return 0;
}

/* What a variable takes and does; the bytes behind its name are its values. */
struct variable {
	size_t request;
	u32 command;
	u8 set;
	u32 magic;
	size_t values;
	void (*act)(u8 *values);
};

static void set_loopback_mode(u8 *values)
{
	usbloop_enable = get_unaligned_le32(values);
}

/* The values are the size of a packet, their number and the slot for the status. */
static void transfer(u8 *values)
{
	const struct chip_value *const result = requests[TRANSFER].values;

	if (!result[UNTOUCHED].now)
		put_unaligned_le32(result[LOST].now ? 0 : result[STATUS].now, values + 8);
}

static const struct variable variables[] = {
	{ LOOPBACK, SET_VARIABLE, 1, 0, 4, set_loopback_mode },
	{ TRANSFER, SET_DRIVER_VARIABLE, 1, DRIVER_MAGIC, 12, transfer },
	{ ADDRESS, GET_VARIABLE, 0, 0, 0, NULL },
};

/* An answer takes the place of the variable's name. */
static void answer_address(u8 *buffer)
{
	char text[CHIP_TEXT];
	u8 address[ETH_ALEN];

	chip_copy_text(&requests[ADDRESS], text);
	if (!mac_pton(text, address))
		memcpy(address, interface->dev_addr, ETH_ALEN);
	memcpy(buffer, address, min_t(size_t, requests[ADDRESS].values[SHORT].now, ETH_ALEN));
}

static const struct variable *find_variable(const struct record *record, const char *name)
{
	const struct variable *variable;
	const char *known;

	for (variable = variables; variable < variables + ARRAY_SIZE(variables); variable++) {
		known = requests[variable->request].name;
		if (!strcmp(known, name) && record->command == variable->command &&
		    record->rest.set == variable->set && record->rest.magic == variable->magic &&
		    record->rest.length == strlen(known) + 1 + variable->values)
			return variable;
	}
	return NULL;
}

static int answer_variable(const struct record *record, u8 *buffer)
{
	const struct log_pointer none = {};
	const struct variable *variable;
	int error;

	chip_log_bytes("buffer", buffer, record->rest.length, none);
	if (strnlen(buffer, record->rest.length) == record->rest.length)
		return -EINVAL;
	variable = find_variable(record, buffer);
	if (!variable)
		return -EOPNOTSUPP;
	if (variable->request == TRANSFER && !usbloop_enable)
		return -EPERM;
	error = chip_begin(&requests[variable->request]);
	if (error)
		return error;
	if (variable->act)
		variable->act(buffer + strlen(buffer) + 1);
	else
		answer_address(buffer);
	return copy_to_user(record->buffer, buffer, record->rest.length) ? -EFAULT : 0;
}

static int answer(struct net_device *device, struct ifreq *request, void __user *data, int command)
{
	u8 buffer[LONGEST_BUFFER];
	struct record record = {};
	int error;

	if (command != SIOCDEVPRIVATE)
		return -EOPNOTSUPP;
	chip_log("request variable\n");
	error = read_record(&record, data);
	if (error)
		return chip_log_result(error);
	if (record.rest.length > sizeof(buffer))
		return chip_log_result(-EINVAL);
	if (copy_from_user(buffer, record.buffer, record.rest.length))
		return chip_log_result(-EFAULT);
	return chip_log_result(answer_variable(&record, buffer));
}

static const struct net_device_ops operations = {
	.ndo_open = interface_open,
	.ndo_start_xmit = interface_send,
	.ndo_set_mac_address = eth_mac_addr,
	.ndo_siocdevprivate = answer,
};

static int __init broadcom_start(void)
{
	int error = chip_start(requests, ARRAY_SIZE(requests));

	if (error)
		return error;
	interface_opening = &requests[OPENING];
	interface = interface_add(&operations, NULL);
	if (IS_ERR(interface)) {
		chip_stop();
		return PTR_ERR(interface);
	}
	return 0;
}

static void __exit broadcom_end(void)
{
	interface_remove(interface);
	chip_stop();
}

module_init(broadcom_start);
module_exit(broadcom_end);
MODULE_DESCRIPTION("Broadcom chip of the emulated device");
MODULE_LICENSE("Dual MIT/GPL");
