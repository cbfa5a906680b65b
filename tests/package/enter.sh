# Runs a command in another root, inside namespaces of their own for mounts and processes. Usage: unshare ... enter.sh ROOT COMMAND...
root=$1
shift

mount -t proc proc "$root/proc"
mount -t tmpfs -o mode=755 devices "$root/dev"
while read -r name major minor; do
  mknod -m 666 "$root/dev/$name" c "$major" "$minor"
done <<END
null 1 3
zero 1 5
full 1 7
random 1 8
urandom 1 9
tty 5 0
END
mkdir "$root/dev/pts" "$root/dev/shm"
mount -t devpts -o newinstance,ptmxmode=0666,mode=620,gid=5 terminals "$root/dev/pts"
mount -t tmpfs -o mode=1777 shared "$root/dev/shm"
ln -s pts/ptmx "$root/dev/ptmx"
ln -s /proc/self/fd "$root/dev/fd"
exec chroot "$root" env -i HOME=/root PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 \
  DEBIAN_FRONTEND=noninteractive "$@"
