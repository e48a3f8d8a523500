// SPDX-License-Identifier: GPL-2.0 OR MIT
#include "interface.h"

#include "chip.h"

#include <linux/etherdevice.h>
#include <linux/module.h>

struct chip_request *interface_opening;

int interface_open(struct net_device *device)
{
	const int error = chip_begin(interface_opening);

	if (!error)
		netif_start_queue(device);
	return error;
}

netdev_tx_t interface_send(struct sk_buff *packet, struct net_device *device)
{
	dev_kfree_skb(packet);
	device->stats.tx_dropped++;
	return NETDEV_TX_OK;
}

struct net_device *interface_add(const struct net_device_ops *operations,
				 const struct iw_handler_def *handlers)
{
	static const u8 address[ETH_ALEN] = { 0x02, 0x0a, 0xf5, 0x12, 0x34, 0x56 };
	struct net_device *device = alloc_netdev(0, "wlan0", NET_NAME_ENUM, ether_setup);
	int error;

	if (!device)
		return ERR_PTR(-ENOMEM);
	device->netdev_ops = operations;
	device->wireless_handlers = handlers;
	eth_hw_addr_set(device, address);
	error = register_netdev(device);
	if (error) {
		free_netdev(device);
		return ERR_PTR(error);
	}
	return device;
}

void interface_remove(struct net_device *device)
{
	unregister_netdev(device);
	free_netdev(device);
}
