// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * service-worker.js - caches the page's files, so that it works offline. Each deployment has its own cache, which is complete
 * before it is used, and is deleted when no page of the deployment is open: an old page never loads files of a new deployment.
 */
/** The scope in the name separates the caches of copies of the page in other folders of the server. */
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
