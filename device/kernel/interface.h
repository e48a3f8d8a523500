/* SPDX-License-Identifier: GPL-2.0 OR MIT */
/* The network interface of a chip: wlan0, with no air behind it. */
#ifndef INTERFACE_H
#define INTERFACE_H

#include <linux/netdevice.h>

struct iw_handler_def;

/* A driver fills its operations in; these are the same for all. */
int interface_open(struct net_device *device);
netdev_tx_t interface_send(struct sk_buff *packet, struct net_device *device);

/* The request that is made when somebody brings the interface up. */
extern struct chip_request *interface_opening;

/* The new interface, or an error. @handlers may be null. */
struct net_device *interface_add(const struct net_device_ops *operations,
				 const struct iw_handler_def *handlers);

void interface_remove(struct net_device *device);

#endif
