"""Installs the build into the staging folder and moves it from there, as a copied folder would be."""
import shutil
import subprocess

from outside import BUILD, PREFIX, STAGE

shutil.rmtree(STAGE, ignore_errors=True)
first = STAGE / "first-prefix"
subprocess.run(["cmake", "--install", BUILD, "--prefix", first], check=True)
first.rename(PREFIX)
