/* SPDX-License-Identifier: GPL-2.0 OR MIT */
/*
 * What the drivers share: the requests that a chip answers, and what a scenario says about them.
 *
 * A line written to /sys/kernel/debug/chip/control sets one request:
 *
 *	REQUEST [NAME=NUMBER]... [text=THE REST OF THE LINE]
 *
 * and takes back what was set for it before; "reset" takes back all. Names that every request
 * knows:
 *
 *	error=E		refuses with this error number
 *	late=MS		works this long, and lets no signal in
 *	sleeps=1	sleeps until a signal comes or the scenario takes it back
 *	after=N		all of this only after N more requests
 *
 * The names beyond these, and what the text is, say the drivers.
 */
#ifndef CHIP_H
#define CHIP_H

#include <linux/types.h>

#define CHIP_VALUES 5
#define CHIP_TEXT 160

enum chip_circumstance {
	CHIP_ERROR,
	CHIP_LATE,
	CHIP_SLEEPS,
	CHIP_AFTER,
	CHIP_CIRCUMSTANCES
};

/* A number that a scenario may set, and what it is without that. */
struct chip_value {
	const char *name;
	u32 usual;
	u32 now;
};

struct chip_request {
	const char *name;
	/* Called when a scenario has set something; its error refuses the statement. */
	int (*changed)(void);
	struct chip_value values[CHIP_VALUES];
	u32 circumstances[CHIP_CIRCUMSTANCES];
	char text[CHIP_TEXT];
};

/* Takes note of the chip's @count requests and shows its files in debugfs. 0 or an error. */
int chip_start(struct chip_request *requests, size_t count);

void chip_stop(void);

/*
 * Does what the scenario says before the answer. 0 when the request is to be answered, or the
 * error to return.
 */
int chip_begin(struct chip_request *request);

/* Copies the text that the scenario set, which may be empty, to @text of CHIP_TEXT bytes. */
void chip_copy_text(const struct chip_request *request, char *text);

#endif
