"""Shows that configuring stops with the name of the package when a dependency is missing.

Usage: check_missing_dependency.py SOURCE WORK_FOLDER
"""
import shutil
import subprocess
import sys

PACKAGES = {"yaml-cpp": "libyaml-cpp-dev", "CLI11": "libcli11-dev", "nlohmann_json": "nlohmann-json3-dev", "tomlplusplus": "libtomlplusplus-dev",
            "GTest": "libgtest-dev"}


def main():
    source, work = sys.argv[1], sys.argv[2]
    for name, package in PACKAGES.items():
        shutil.rmtree(work, ignore_errors=True)
        command = ["cmake", "-S", source, "-B", work, f"-DCMAKE_DISABLE_FIND_PACKAGE_{name}=ON"]
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        if result.returncode == 0 or f"apt-get install {package}" not in result.stderr:
            sys.exit(f"without {name}: {result.returncode}\n{result.stderr}")
        print(f"without {name}: stops and names {package}")


if __name__ == "__main__":
    main()
