// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * service-worker.js - keeps the page's files, so that it works without a network. Each deployment has a cache of its own, which is
 * filled whole before it is used and removed when no page of that deployment is open: an old page never meets new files.
 */
/** Another copy of the page, in another folder of this server, has caches of its own. */
const ours = `mathexpr ${self.registration.scope} `;
const cacheName = ours + deployment;

self.addEventListener("install", (event) => {
  const requests = ["./", ...files].map((file) => new Request(file, { cache: "reload" }));
  event.waitUntil(caches.open(cacheName).then((cache) => cache.addAll(requests)));
});

self.addEventListener("activate", (event) => {
  const removeOthers = async () => {
    const others = (await caches.keys()).filter((name) => name.startsWith(ours) && name !== cacheName);
    await Promise.all(others.map((name) => caches.delete(name)));
    await self.clients.claim();
  };
  event.waitUntil(removeOthers());
});

self.addEventListener("fetch", (event) => {
  const { request } = event;
  if (request.method !== "GET" || new URL(request.url).origin !== location.origin) return;
  const answer = async () => {
    const cache = await caches.open(cacheName);
    const kept = await cache.match(request.mode === "navigate" ? "./" : request, { ignoreSearch: true });
    return kept ?? fetch(request);
  };
  event.respondWith(answer());
});
